#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "Vst2Plugin.h"

/// VST2 modules with several plug-ins in one file.
namespace zeltestplugins {

/// What the host is offered to choose from.
class Vst2Shell : public Vst2Plugin {
public:
    Vst2Shell(vst2::HostCallback host, const char* name, std::int32_t id, std::vector<Vst2Facts> contents)
        : Vst2Plugin(host, {name, id, 0, 0, {}, vst2::kCategoryShell}), mContents(std::move(contents)) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kShellGetNextPlugin) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        if (mNext == mContents.size()) return 0;
        Answer(pointer, 64, mContents[mNext].name);
        return mContents[mNext++].id;
    }

private:
    std::vector<Vst2Facts> mContents;
    std::size_t mNext = 0;
};

/// What a shell's entry returns: the shell, or by `make(facts)` the one of its contents that the host says it wants.
inline vst2::Effect* EnterShell(vst2::HostCallback host, const char* name, std::int32_t id,
                                const std::vector<Vst2Facts>& contents,
                                const std::function<Vst2Plugin*(const Vst2Facts&)>& make) {
    const std::intptr_t wanted = host(nullptr, vst2::kHostCurrentId, 0, 0, nullptr, 0.0f);
    for (const Vst2Facts& facts : contents) {
        if (facts.id == wanted) return make(facts)->GetEffect();
    }
    return wanted == 0 ? (new Vst2Shell(host, name, id, contents))->GetEffect() : nullptr;
}

}  // namespace zeltestplugins
