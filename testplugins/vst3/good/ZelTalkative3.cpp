// Uses everything that a host makes for its plug-ins: asks for its name, has its component and controller connected and
// sends the controller a message with a value of each kind. What it heard is the name of its bus.
#include "support/Vst3Plugin.h"

#include <pluginterfaces/vst/ivstattributes.h>
#include <pluginterfaces/vst/ivsthostapplication.h>

namespace {

using namespace zeltestplugins;

constexpr int64 kParameters = 7;

std::string Narrow(const Vst::TChar* text) {
    std::string narrow;
    while (*text != 0) narrow += static_cast<char>(*text++);
    return narrow;
}

/// Writes a value of each kind into a list and reads it back.
std::string TryAttributes(Vst::IAttributeList& list) {
    list.setInt("int", 42);
    list.setFloat("float", 0.5);
    Vst::String128 sentence = {};
    CopyText(sentence, 128, "words that do not fit");
    list.setString("string", sentence);
    list.setBinary("binary", "bytes", 5);
    int64 whole = 0;
    double real = 0.0;
    Vst::TChar words[6] = {};
    const void* bytes = nullptr;
    uint32 length = 0;
    list.getInt("int", whole);
    list.getFloat("float", real);
    list.getString("string", words, sizeof(words));
    list.getBinary("binary", bytes, length);
    // A value is found under its own name and kind only.
    if (list.getInt("float", whole) == kResultOk || list.getInt("nothing", whole) == kResultOk) return "wrong";
    const std::string heard = std::to_string(whole) + "; " + std::to_string(real).substr(0, 3) + "; " + Narrow(words);
    return heard + "; " + std::string(static_cast<const char*>(bytes), length);
}

class Controller : public Connected<Vst3Controller> {
public:
    using Connected<Vst3Controller>::Connected;

    int32 PLUGIN_API getParameterCount() override { return static_cast<int32>(mTold); }
    tresult PLUGIN_API notify(Vst::IMessage* message) override {
        if (std::strcmp(message->getMessageID(), "parameters") != 0) return kResultFalse;
        return message->getAttributes()->getInt("count", mTold);
    }

private:
    int64 mTold = 0;
};

class Component : public Connected<Vst3Component> {
public:
    using Connected<Vst3Component>::Connected;

    tresult PLUGIN_API initialize(FUnknown* context) override {
        if (context->queryInterface(Vst::IHostApplication_iid, reinterpret_cast<void**>(&mHost)) != kResultOk) {
            return kResultFalse;
        }
        Vst::String128 name = {};
        mHost->getName(name);
        if (Vst::IMessage* const message = MakeMessage()) {
            mHeard = Narrow(name) + "; " + TryAttributes(*message->getAttributes());
            message->release();
        }
        mFacts.buses = {{Vst::kOutput, 2, mHeard.c_str()}};
        return Connected<Vst3Component>::initialize(context);
    }
    tresult PLUGIN_API terminate() override {
        mHost->release();
        return Connected<Vst3Component>::terminate();
    }
    tresult PLUGIN_API connect(Vst::IConnectionPoint* other) override {
        Vst::IMessage* const message = MakeMessage();
        if (message == nullptr) return kResultFalse;
        message->setMessageID("parameters");
        message->getAttributes()->setInt("count", kParameters);
        other->notify(message);
        message->release();
        return kResultOk;
    }

private:
    Vst::IMessage* MakeMessage() {
        TUID id = {};
        std::memcpy(id, Vst::IMessage_iid, sizeof(TUID));
        void* message = nullptr;
        mHost->createInstance(id, id, &message);
        return static_cast<Vst::IMessage*>(message);
    }

    Vst::IHostApplication* mHost = nullptr;
    std::string mHeard;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Component(facts); }
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Zel Talkative 3", .id = MakeId(5), .controllerId = MakeId(6)}});
    return &factory;
}
