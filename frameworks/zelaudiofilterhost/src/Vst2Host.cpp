#include "Vst2Host.h"

#include <atomic>
#include <cmath>
#include <cstring>

#include "Vst2HostClient.h"
#include "Vst2HostConnection.h"

namespace zelaudiofilterhost {

namespace {

constexpr char kVendor[] = "Zel";
constexpr char kProduct[] = "Zel Audio Filter Host";
constexpr std::intptr_t kVendorVersion = 1;
constexpr std::intptr_t kVstVersion = 2400;
constexpr std::intptr_t kEnglish = 1;
constexpr std::intptr_t kAutomationOff = 1;
constexpr double kTempo = 120.0;

/// Plug-ins may ask from threads that they start while they are made.
std::atomic<std::int32_t> gWantedComponent{0};

std::intptr_t AnswerText(const char* text, std::size_t length, void* pointer) {
    if (pointer == nullptr) return 0;
    std::memcpy(pointer, text, length);
    return 1;
}

std::intptr_t AnswerCanDo(const void* pointer) {
    constexpr const char* kAbilities[] = {"shellCategory", "sendVstTimeInfo", "sizeWindow"};
    if (pointer == nullptr) return 0;
    for (const char* const ability : kAbilities) {
        if (std::strcmp(static_cast<const char*>(pointer), ability) == 0) return 1;
    }
    return 0;
}

double GetSampleRate(const vst2::Effect* effect) {
    const Vst2HostConnection::Use client(effect);
    return client ? client->GetSampleRate() : Vst2Host::kSampleRate;
}

std::intptr_t GetBlockSize(const vst2::Effect* effect) {
    const Vst2HostConnection::Use client(effect);
    return client ? client->GetBlockSize() : Vst2Host::kBlockSize;
}

std::intptr_t GetProcessLevel(const vst2::Effect* effect) {
    const Vst2HostConnection::Use client(effect);
    return client ? client->GetProcessLevel() : vst2::kLevelUser;
}

std::intptr_t RequestEditorSize(const vst2::Effect* effect, std::intptr_t width, std::intptr_t height) {
    const Vst2HostConnection::Use client(effect);
    return client && client->RequestEditorSize(width, height) ? 1 : 0;
}

/// Made anew for each question and each thread: what is handed out is the plug-in's to scribble on.
std::intptr_t AnswerTime(const vst2::Effect* effect) {
    thread_local vst2::TimeInfo time;
    time = vst2::TimeInfo();
    time.sampleRate = GetSampleRate(effect);
    time.tempo = kTempo;
    time.beatsPerBar = 4;
    time.beatUnit = 4;
    time.flags = vst2::kQuarterPositionValid | vst2::kTempoValid | vst2::kBarStartValid | vst2::kTimeSignatureValid;
    return reinterpret_cast<std::intptr_t>(&time);
}

}  // namespace

std::intptr_t Vst2Host::Callback(vst2::Effect* effect, std::int32_t operation, std::int32_t index, std::intptr_t value,
                                 void* pointer, float) noexcept {
    switch (operation) {
        case vst2::kHostVersion:
            return kVstVersion;
        case vst2::kHostCurrentId:
            return gWantedComponent.load();
        case vst2::kHostGetTime:
            return AnswerTime(effect);
        case vst2::kHostTempoAt:
            return static_cast<std::intptr_t>(kTempo * 10000);
        case vst2::kHostSizeWindow:
            return RequestEditorSize(effect, index, value);
        case vst2::kHostGetSampleRate:
            return std::lround(GetSampleRate(effect));
        case vst2::kHostGetBlockSize:
            return GetBlockSize(effect);
        case vst2::kHostWillReplace:
            return 1;
        case vst2::kHostGetProcessLevel:
            return GetProcessLevel(effect);
        case vst2::kHostGetAutomationState:
            return kAutomationOff;
        case vst2::kHostGetVendorText:
            return AnswerText(kVendor, sizeof(kVendor), pointer);
        case vst2::kHostGetProductText:
            return AnswerText(kProduct, sizeof(kProduct), pointer);
        case vst2::kHostGetVendorVersion:
            return kVendorVersion;
        case vst2::kHostCanDo:
            return AnswerCanDo(pointer);
        case vst2::kHostGetLanguage:
            return kEnglish;
        case vst2::kHostUpdateDisplay:
        case vst2::kHostBeginEdit:
        case vst2::kHostEndEdit:
            return 1;
        default:
            return 0;
    }
}

Vst2Host::WantedComponent::WantedComponent(std::int32_t id) { gWantedComponent = id; }

Vst2Host::WantedComponent::~WantedComponent() { gWantedComponent = 0; }

}  // namespace zelaudiofilterhost
