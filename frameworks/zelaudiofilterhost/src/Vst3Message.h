#pragma once

#include <string>

#include <pluginterfaces/vst/ivstmessage.h>

#include "Vst3AttributeList.h"
#include "Vst3Object.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

/// A message that the host makes for the parts of a VST3 plug-in to send each other. One thread at a time.
class Vst3Message final : public Vst3Object<Vst3Message, Steinberg::Vst::IMessage> {
public:
    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IMessage_iid; }

    Vst3Message() : mAttributes(Vst3Ptr<Vst3AttributeList>::Adopt(new Vst3AttributeList)) {}

    Steinberg::FIDString PLUGIN_API getMessageID() override { return mId.c_str(); }
    void PLUGIN_API setMessageID(Steinberg::FIDString id) override { mId = id == nullptr ? "" : id; }
    /// The list stays the message's.
    Steinberg::Vst::IAttributeList* PLUGIN_API getAttributes() override { return mAttributes.Get(); }

private:
    std::string mId;
    Vst3Ptr<Vst3AttributeList> mAttributes;
};

}  // namespace zelaudiofilterhost
