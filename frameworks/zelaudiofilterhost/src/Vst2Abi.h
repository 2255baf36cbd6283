#pragma once

#include <cstddef>
#include <cstdint>

/// The published binary interface of VST 2.4 plug-ins: what host and plug-in hand each other, in this project's own
/// words. Numbers and layouts are fixed by plug-ins that exist; nothing here may change.
///
/// A module exports one function that makes an effect. The effect is a struct of function pointers and counts, made and
/// owned by the plug-in. The host asks for nearly everything through the effect's dispatcher, the plug-in through the
/// host's callback; both take an operation number and four arguments whose meaning depends on it.
namespace zelaudiofilterhost {
namespace vst2 {

struct Effect;

/// A plug-in's question to its host. `effect` is null as long as the plug-in has none to show.
typedef std::intptr_t (*HostCallback)(Effect* effect, std::int32_t operation, std::int32_t index, std::intptr_t value,
                                      void* pointer, float number);
/// A host's question to the plug-in.
typedef std::intptr_t (*Dispatcher)(Effect* effect, std::int32_t operation, std::int32_t index, std::intptr_t value,
                                    void* pointer, float number);
typedef void (*ProcessFloat)(Effect* effect, float** inputs, float** outputs, std::int32_t frames);
typedef void (*ProcessDouble)(Effect* effect, double** inputs, double** outputs, std::int32_t frames);
typedef void (*SetParameter)(Effect* effect, std::int32_t index, float value);
typedef float (*GetParameter)(Effect* effect, std::int32_t index);
/// The module's entry: makes an effect, or returns null.
typedef Effect* (*Entry)(HostCallback host);

constexpr char kEntryName[] = "VSTPluginMain";
/// What modules from before version 2.4 call their entry.
constexpr char kOldEntryName[] = "main";
/// 'VstP', the first four bytes of every effect.
constexpr std::int32_t kMagic = 0x56737450;

struct Effect {
    std::int32_t magic;
    Dispatcher dispatcher;
    ProcessFloat processAccumulating;  ///< adds to the outputs; long out of use
    SetParameter setParameter;         ///< values run from 0 to 1
    GetParameter getParameter;
    std::int32_t programCount;
    std::int32_t parameterCount;
    std::int32_t inputCount;  ///< in channels
    std::int32_t outputCount;
    std::int32_t flags;           ///< of EffectFlag
    std::intptr_t hostReserved1;  ///< the host's to use
    std::intptr_t hostReserved2;
    std::int32_t initialDelay;  ///< latency in frames
    std::int32_t realQualities;
    std::int32_t offQualities;
    float ioRatio;
    void* object;  ///< the plug-in's to use
    void* user;
    std::int32_t uniqueId;
    std::int32_t version;
    ProcessFloat process;  ///< overwrites the outputs
    ProcessDouble processDouble;
    char future[56];
};
static_assert(sizeof(void*) != 8 || (sizeof(Effect) == 192 && offsetof(Effect, uniqueId) == 112),
              "the layout that plug-ins were built with");

enum EffectFlag : std::int32_t {
    kHasEditor = 1 << 0,
    kCanReplace = 1 << 4,     ///< `process` is there
    kProgramChunks = 1 << 5,  ///< state is one block of bytes
    kIsSynth = 1 << 8,
    kNoSoundInStop = 1 << 9,
    kCanDoubleReplace = 1 << 12  ///< `processDouble` is there
};

/// What a host asks an effect. The argument names are those of Dispatcher.
enum EffectOperation : std::int32_t {
    kOpen = 0,                 ///< first call to an effect
    kClose = 1,                ///< last call: the effect deletes itself
    kSetProgram = 2,           ///< value
    kGetProgram = 3,           ///< returns it
    kSetProgramName = 4,       ///< pointer: text
    kGetProgramName = 5,       ///< pointer: text buffer, 24 bytes
    kGetParameterLabel = 6,    ///< index; pointer: text buffer, 8 bytes by the book, plug-ins write more
    kGetParameterDisplay = 7,  ///< as above
    kGetParameterName = 8,     ///< as above
    kSetSampleRate = 10,       ///< number
    kSetBlockSize = 11,        ///< value: most frames at a time
    kMainsChanged = 12,        ///< value: 1 starts, 0 stops
    kEditorGetRect = 13,       ///< pointer: EditorRect**, which stays the plug-in's
    kEditorOpen = 14,          ///< pointer: native parent window; returns 1 by the book, plug-ins return anything
    kEditorClose = 15,
    kEditorIdle = 19,
    kGetChunk = 23,        ///< pointer: void**; index 1 asks for the current program only; returns the length
    kSetChunk = 24,        ///< pointer, value: length; index as above
    kProcessEvents = 25,   ///< pointer: events
    kCanBeAutomated = 26,  ///< index
    kStringToParameter = 27,
    kGetProgramNameIndexed = 29,
    kGetInputProperties = 33,  ///< index; pointer: PinProperties
    kGetOutputProperties = 34,
    kGetCategory = 35,  ///< returns one of Category
    kSetSpeakerArrangement = 42,
    kSetBypass = 44,
    kGetEffectName = 45,     ///< pointer: text buffer, 32 bytes by the book
    kGetVendorText = 47,     ///< pointer: text buffer, 64 bytes by the book
    kGetProductText = 48,    ///< as above
    kGetVendorVersion = 49,  ///< returns it
    kVendorSpecific = 50,
    kCanDo = 51,  ///< pointer: what; returns 1 yes, -1 no, 0 unknown
    kGetTailSize = 52,
    kGetParameterProperties = 56,
    kGetVstVersion = 58,  ///< returns 2400 for version 2.4
    kEditorKeyDown = 59,  ///< index: character; value: one of VirtualKey; number: sum of KeyModifier; returns 1: used
    kEditorKeyUp = 60,    ///< as above
    kBeginSetProgram = 67,
    kEndSetProgram = 68,
    kGetSpeakerArrangement = 69,
    kShellGetNextPlugin = 70,  ///< pointer: text buffer, 64 bytes; returns the next id, 0 at the end
    kStartProcess = 71,
    kStopProcess = 72,
    kSetProcessPrecision = 77
};

/// What a plug-in asks its host.
enum HostOperation : std::int32_t {
    kHostAutomate = 0,   ///< index, number: a parameter was turned in the editor
    kHostVersion = 1,    ///< returns 2400
    kHostCurrentId = 2,  ///< returns the id of the shell's component that is wanted, 0 for the shell itself
    kHostIdle = 3,
    kHostPinConnected = 4,  ///< returns 0 for yes
    kHostWantEvents = 6,
    kHostGetTime = 7,  ///< returns TimeInfo*, the host's
    kHostProcessEvents = 8,
    kHostTempoAt = 10,     ///< returns beats per minute times 10000
    kHostIoChanged = 13,   ///< returns 1 when the new counts are taken up
    kHostSizeWindow = 15,  ///< index: width, value: height; returns 1 when done
    kHostGetSampleRate = 16,
    kHostGetBlockSize = 17,
    kHostGetInputLatency = 18,
    kHostGetOutputLatency = 19,
    kHostWillReplace = 22,
    kHostGetProcessLevel = 23,  ///< returns one of ProcessLevel
    kHostGetAutomationState = 24,
    kHostGetVendorText = 32,   ///< pointer: text buffer, 64 bytes
    kHostGetProductText = 33,  ///< as above
    kHostGetVendorVersion = 34,
    kHostVendorSpecific = 35,
    kHostCanDo = 37,        ///< pointer: what; returns as kCanDo
    kHostGetLanguage = 38,  ///< returns 1 for English
    kHostGetDirectory = 41,
    kHostUpdateDisplay = 42,
    kHostBeginEdit = 43,  ///< index: a gesture on a parameter starts
    kHostEndEdit = 44
};

enum Category : std::int32_t {
    kCategoryUnknown = 0,
    kCategoryEffect = 1,
    kCategorySynth = 2,
    kCategoryAnalysis = 3,
    kCategoryMastering = 4,
    kCategorySpatializer = 5,
    kCategoryRoom = 6,
    kCategorySurround = 7,
    kCategoryRestoration = 8,
    kCategoryOffline = 9,
    kCategoryShell = 10,  ///< no effect itself, but several to choose from
    kCategoryGenerator = 11
};

enum ProcessLevel : std::int32_t { kLevelUnknown = 0, kLevelUser = 1, kLevelRealtime = 2 };

struct EditorRect {
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};

/// Keys that type no character of their own; 0 where there is none of these.
enum VirtualKey : std::uint8_t {
    kKeyBackspace = 1,
    kKeyTab = 2,
    kKeyClear = 3,
    kKeyReturn = 4,
    kKeyPause = 5,
    kKeyEscape = 6,
    kKeySpace = 7,
    kKeyNext = 8,
    kKeyEnd = 9,
    kKeyHome = 10,
    kKeyLeft = 11,
    kKeyUp = 12,
    kKeyRight = 13,
    kKeyDown = 14,
    kKeyPageUp = 15,
    kKeyPageDown = 16,
    kKeySelect = 17,
    kKeyPrint = 18,
    kKeyEnter = 19,  ///< of the number pad
    kKeySnapshot = 20,
    kKeyInsert = 21,
    kKeyDelete = 22,
    kKeyHelp = 23,
    kKeyNumberPad0 = 24,  ///< up to 33 for the 9
    kKeyMultiply = 34,
    kKeyAdd = 35,
    kKeySeparator = 36,
    kKeySubtract = 37,
    kKeyDecimal = 38,
    kKeyDivide = 39,
    kKeyF1 = 40,  ///< up to 51 for F12
    kKeyNumLock = 52,
    kKeyScrollLock = 53,
    kKeyShift = 54,
    kKeyControl = 55,
    kKeyAlt = 56,
    kKeyEquals = 57
};

enum KeyModifier : std::uint8_t {
    kModifierShift = 1 << 0,
    kModifierAlt = 1 << 1,
    kModifierCommand = 1 << 2,  ///< the Control key of a Mac
    kModifierControl = 1 << 3   ///< the Command key of a Mac
};

/// What an effect says of one of its channels. The answer to the question for it is 1 when there is one.
struct PinProperties {
    char label[64];
    std::int32_t flags;        ///< of PinFlag
    std::int32_t arrangement;  ///< an Arrangement: of the channels from this one on
    char shortLabel[8];
    char future[48];
};
static_assert(sizeof(PinProperties) == 128, "the layout that plug-ins were built with");

enum PinFlag : std::int32_t {
    kPinIsActive = 1 << 0,
    kPinIsFirstOfPair = 1 << 1,
    kPinNamesSpeakers = 1 << 2  ///< `arrangement` counts
};

/// Arrangements of speakers are numbers from 0 to this one less; below 0 are empty ones and those of an effect's own.
/// The ones that others are told by here.
constexpr std::int32_t kArrangements = 29;
enum Arrangement : std::int32_t {
    kArrangementOwn = -2,
    kArrangementEmpty = -1,
    kArrangementMono = 0,
    kArrangementStereo = 1,
    kArrangementQuad = 11,
    kArrangement51 = 15,
    kArrangement71 = 23
};

enum TimeFlag : std::int32_t {
    kTransportPlaying = 1 << 1,
    kNanosecondsValid = 1 << 8,
    kQuarterPositionValid = 1 << 9,
    kTempoValid = 1 << 10,
    kBarStartValid = 1 << 11,
    kTimeSignatureValid = 1 << 13
};

struct TimeInfo {
    double samplePosition;
    double sampleRate;
    double nanoseconds;
    double quarterPosition;
    double tempo;
    double barStart;
    double cycleStart;
    double cycleEnd;
    std::int32_t beatsPerBar;
    std::int32_t beatUnit;
    std::int32_t smpteOffset;
    std::int32_t smpteFrameRate;
    std::int32_t samplesToNextClock;
    std::int32_t flags;  ///< of TimeFlag
};
static_assert(sizeof(TimeInfo) == 88, "the layout that plug-ins were built with");

}  // namespace vst2
}  // namespace zelaudiofilterhost
