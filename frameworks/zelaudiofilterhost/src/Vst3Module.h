#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <pluginterfaces/base/ipluginbase.h>
#include <zelcore/ustring.h>

#include "SharedLibrary.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

/// One kind of effect or instrument that a VST3 module can make.
struct Vst3Class {
    std::array<char, sizeof(Steinberg::TUID)> id = {};
    zelcore::ustring name;
    zelcore::ustring vendor;
    zelcore::ustring version;
    zelcore::ustring subCategories;  ///< "Fx|Dynamics", "Instrument|Synth"

    /// The id as 32 hexadecimal digits.
    zelcore::ustring GetIdText() const;
};

/// A loaded and started VST3 module. Lives longer than every Vst3Instance made of it. Main thread.
class Vst3Module {
public:
    /// The module at the full path `path` (UTF-8) of a file or bundle, loaded unless it is in use already: modules are
    /// started once, however many ask. Throws PluginLoadError.
    static std::shared_ptr<Vst3Module> Open(const std::string& path);
    ~Vst3Module();

    /// The effects and instruments that it says it can make, each id once, at most kMaxComponents.
    std::vector<Vst3Class> ListClasses() const;

    /// Makes an object and returns the interface asked for, or null. Throws PluginLoadError for a plug-in's exception.
    template <typename T>
    Vst3Ptr<T> Make(const Steinberg::TUID classId, const Steinberg::TUID interfaceId) const {
        void* const object = MakeObject(classId, interfaceId);
        return Vst3Ptr<T>::Adopt(static_cast<T*>(object));
    }

private:
    /// The module's code between its start and its end.
    class Run {
    public:
        explicit Run(const SharedLibrary& library);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        std::function<bool()> mExit;
    };

    explicit Vst3Module(const std::string& libraryPath);
    void* MakeObject(const Steinberg::TUID classId, const Steinberg::TUID interfaceId) const;

    // In this order: the factory goes first, then the module is ended, then unloaded.
    SharedLibrary mLibrary;
    Run mRun;
    Vst3Ptr<Steinberg::IPluginFactory> mFactory;
};

}  // namespace zelaudiofilterhost
