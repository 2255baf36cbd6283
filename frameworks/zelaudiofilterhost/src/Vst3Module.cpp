#include "Vst3Module.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelcore/Utf.h>

#include "PluginCall.h"
#include "PluginText.h"
#include "Vst3Bundle.h"
#include "Vst3Entry.h"
#include "Vst3HostContext.h"

namespace zelaudiofilterhost {

namespace {

typedef Steinberg::IPluginFactory* (*GetFactory)();

Vst3Ptr<Steinberg::IPluginFactory> MakeFactory(const SharedLibrary& library) {
    const auto getFactory = RequireVst3Function<GetFactory>(library, "GetPluginFactory");
    return CallPlugin("in its entry point", [getFactory] {
        auto factory = Vst3Ptr<Steinberg::IPluginFactory>::Adopt(getFactory());
        if (!factory) throw PluginLoadError("its entry point returned nothing");
        const auto factory3 = Vst3Ptr<Steinberg::IPluginFactory3>::Query(factory.Get(), Steinberg::IPluginFactory3_iid);
        if (factory3) factory3->setHostContext(Vst3HostContext::GetUnknown());
        return factory;
    });
}

bool IsEffectCategory(const char* category) {
    return strnlen(category, Steinberg::PClassInfo::kCategorySize) == std::strlen(kVstAudioEffectClass) &&
           std::strncmp(category, kVstAudioEffectClass, std::strlen(kVstAudioEffectClass)) == 0;
}

/// The parts that the three generations of class infos have in common.
template <typename Info>
std::optional<Vst3Class> TakeBasics(const Info& info) {
    if (!IsEffectCategory(info.category)) return std::nullopt;
    Vst3Class result;
    std::memcpy(result.id.data(), info.cid, result.id.size());
    result.name = CleanPluginText(info.name, std::size(info.name));
    return result;
}

template <typename Info>
std::optional<Vst3Class> TakeAll(const Info& info) {
    std::optional<Vst3Class> result = TakeBasics(info);
    if (!result) return result;
    result->vendor = CleanPluginText(info.vendor, std::size(info.vendor));
    result->version = CleanPluginText(info.version, std::size(info.version));
    result->subCategories = CleanPluginText(info.subCategories, std::size(info.subCategories));
    return result;
}

/// Asks for one class in the newest form that the factory answers.
class ClassReader {
public:
    explicit ClassReader(Steinberg::IPluginFactory* factory)
        : mFactory(factory),
          mFactory2(Vst3Ptr<Steinberg::IPluginFactory2>::Query(factory, Steinberg::IPluginFactory2_iid)),
          mFactory3(Vst3Ptr<Steinberg::IPluginFactory3>::Query(factory, Steinberg::IPluginFactory3_iid)) {}

    std::optional<Vst3Class> Read(Steinberg::int32 index) const {
        Steinberg::PClassInfoW unicode = {};
        if (mFactory3 && mFactory3->getClassInfoUnicode(index, &unicode) == Steinberg::kResultOk) {
            return TakeAll(unicode);
        }
        Steinberg::PClassInfo2 second = {};
        if (mFactory2 && mFactory2->getClassInfo2(index, &second) == Steinberg::kResultOk) return TakeAll(second);
        Steinberg::PClassInfo first = {};
        if (mFactory->getClassInfo(index, &first) == Steinberg::kResultOk) return TakeBasics(first);
        return std::nullopt;
    }

private:
    Steinberg::IPluginFactory* mFactory;
    Vst3Ptr<Steinberg::IPluginFactory2> mFactory2;
    Vst3Ptr<Steinberg::IPluginFactory3> mFactory3;
};

zelcore::ustring ReadFactoryVendor(Steinberg::IPluginFactory& factory) {
    Steinberg::PFactoryInfo info = {};
    if (factory.getFactoryInfo(&info) != Steinberg::kResultOk) return zelcore::ustring();
    return CleanPluginText(info.vendor, std::size(info.vendor));
}

}  // namespace

zelcore::ustring Vst3Class::GetIdText() const {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char byte : id) {
        const auto value = static_cast<unsigned char>(byte);
        text += kDigits[value >> 4];
        text += kDigits[value & 0xF];
    }
    return zelcore::utility::AsciiToUTF16(text);
}

Vst3Module::Run::Run(const SharedLibrary& library) : mExit(nullptr) {
    // All are looked for before any is called: a module that cannot be ended must not be started.
    RequireVst3Function<GetFactory>(library, "GetPluginFactory");
    const Vst3Entry entry = FindVst3Entry(library);
    const bool started = !entry.start || CallPlugin("when it was started", entry.start);
    if (!started) throw PluginLoadError("refused to start");
    mExit = entry.end;
}

Vst3Module::Run::~Run() {
    if (mExit) CallPluginQuietly(mExit);
}

Vst3Module::Vst3Module(const std::string& libraryPath)
    : mLibrary(libraryPath), mRun(mLibrary), mFactory(MakeFactory(mLibrary)) {}

Vst3Module::~Vst3Module() = default;

std::shared_ptr<Vst3Module> Vst3Module::Open(const std::string& path) {
    static std::map<std::filesystem::path, std::weak_ptr<Vst3Module>> running;
    std::erase_if(running, [](const auto& entry) { return entry.second.expired(); });
    const std::string libraryPath = FindVst3Library(path);
    std::error_code error;
    // The loader knows a library by its file, whatever links led to it.
    std::weak_ptr<Vst3Module>& entry = running[std::filesystem::weakly_canonical(libraryPath, error)];
    std::shared_ptr<Vst3Module> module = entry.lock();
    if (!module) {
        module.reset(new Vst3Module(libraryPath));
        entry = module;
    }
    return module;
}

std::vector<Vst3Class> Vst3Module::ListClasses() const {
    return CallPlugin("when it was asked what it contains", [this] {
        std::vector<Vst3Class> classes;
        std::set<std::array<char, sizeof(Steinberg::TUID)>> seen;
        const zelcore::ustring vendor = ReadFactoryVendor(*mFactory.Get());
        const ClassReader reader(mFactory.Get());
        const Steinberg::int32 count =
            std::clamp(mFactory->countClasses(), 0, static_cast<Steinberg::int32>(kMaxComponents));
        for (Steinberg::int32 index = 0; index < count; ++index) {
            std::optional<Vst3Class> found = reader.Read(index);
            if (!found || !seen.insert(found->id).second) continue;
            if (found->vendor.empty()) found->vendor = vendor;
            classes.push_back(*found);
        }
        return classes;
    });
}

void* Vst3Module::MakeObject(const Steinberg::TUID classId, const Steinberg::TUID interfaceId) const {
    return CallPlugin("when it was opened", [&]() -> void* {
        void* object = nullptr;
        const Steinberg::tresult result = mFactory->createInstance(classId, interfaceId, &object);
        return result == Steinberg::kResultOk ? object : nullptr;
    });
}

}  // namespace zelaudiofilterhost
