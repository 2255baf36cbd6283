#pragma once

#include <utility>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <pluginterfaces/vst/ivsteditcontroller.h>
#include <zelaudiofilterhost/AudioFilterParameterInfo.h>
#include <zelcore/ustring.h>

#include "Vst3ParameterMailbox.h"

namespace zelaudiofilterhost {

/// The parameters of one VST3 effect as its edit controller tells them, and their way between the controller and the
/// processor. The controller is asked each time: a parameter may be renamed, moved or gone at any time, and what is not
/// kept needs no telling. Only which ones are for people to see is kept, until their number changes or Renew: those
/// that plug-ins hide, for the buffer size and the like, count for nothing. Main thread; no exception of the plug-in's
/// comes out.
class Vst3Parameters {
public:
    /// Ids and normalised values.
    typedef std::vector<std::pair<Steinberg::Vst::ParamID, double>> Values;

    /// `controller` may be null (no parameters) and outlives the object.
    explicit Vst3Parameters(Steinberg::Vst::IEditController* controller);

    int GetCount() const;
    boost::intrusive_ptr<AudioFilterParameterInfo> GetInfo(int index) const;
    float GetValue(int index);
    ustring GetValueString(int index);
    /// Tells the controller, and the processor with its next block.
    void SetValue(int index, float value);

    /// A value that the controller has by itself and the processor must learn.
    void OnEdited(Steinberg::Vst::ParamID id, double value);

    // For keeping them and giving them back.
    /// Those that are set, whether people see them or not; meters and the like are the plug-in's own.
    Values GetAll() const;
    /// Those that the processor has not learned yet.
    Values GetWaiting() const;
    /// Tells the controller and the processor; ids that are not there (any more) are left out.
    void SetAll(const Values& values);
    /// Both halves of the plug-in have got other values: what was on its way to the processor or from it is dropped,
    /// and which parameters are for people to see is found out anew. Never beside a block.
    void Renew();

    /// Where processing takes the values for the processor from: received there.
    Vst3ParameterMailbox& GetToProcessor() { return mToProcessor; }
    /// Where processing puts the values that the processor tells: sent there. The controller gets them when it is asked
    /// for a value the next time.
    Vst3ParameterMailbox& GetFromProcessor() { return mFromProcessor; }

private:
    int AskCount() const;
    bool AskInfo(int position, Steinberg::Vst::ParameterInfo& info) const;
    void ListShown() const;
    template <typename Function>
    void ForEachSettable(Function function) const;
    bool Find(int index, Steinberg::Vst::ParameterInfo& info) const;
    double Ask(Steinberg::Vst::ParamID id) const;
    bool Tell(Steinberg::Vst::ParamID id, double value);
    void TakeFromProcessor();

    Steinberg::Vst::IEditController* mController;
    /// The controller's positions of those that are not hidden, and of how many that was.
    mutable std::vector<int> mShown;
    mutable int mListedCount = 0;
    Vst3ParameterMailbox mToProcessor;
    Vst3ParameterMailbox mFromProcessor;
};

}  // namespace zelaudiofilterhost
