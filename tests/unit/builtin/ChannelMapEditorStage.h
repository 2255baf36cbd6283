#pragma once

#include <memory>
#include <string>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollArea>
#include <QTest>
#include <zelaudiofilterhostui/AudioFilterChannelMapEditorView.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "support/WaitFor.h"
#include "unit/views/AudioFilterDouble.h"

namespace zeltests {

typedef boost::intrusive_ptr<AudioFilterDouble> FilterPtr;
typedef boost::intrusive_ptr<zelaudiofilterhostui::AudioFilterChannelMapEditorView> MapViewPtr;
typedef zelaudiofilterhost::ChannelMap ChannelMap;

inline zelcore::ustring U(const std::string& text) { return zelcore::utility::UTF8to16(text); }
inline std::string Utf8(const zelcore::ustring& text) {
    const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(text);
    return std::string(utf8.begin(), utf8.end());
}

inline zelaudiofilterhost::AudioFilterBusDescription Bus(
    const std::string& name, const std::string& layout,
    zelaudiofilterhost::AudioFilterBusDescription::Kind kind = zelaudiofilterhost::AudioFilterBusDescription::kMain) {
    return {U(name), zelmediatypes::MakeChannelLayoutForName(layout), kind};
}
inline zelaudiofilterhost::AudioFilterBusDescription Aux(const std::string& name, const std::string& layout) {
    return Bus(name, layout, zelaudiofilterhost::AudioFilterBusDescription::kAuxiliary);
}

inline bool ProcessEventsUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

/// A channel map editor of a filter in a track, found by its rows, shown in a scroll area when that is asked for, and
/// used by input events.
class ChannelMapEditorStage {
public:
    /// What stands in one row; without the last two for channels of the side-chain.
    struct Row {
        zelui::controls::UI_StaticText* text = nullptr;
        zelui::controls::UI_Popup* input = nullptr;
        zelui::controls::UI_Popup* output = nullptr;
        zelui::controls::UI_StaticText* right = nullptr;
    };

    /// The filter has stereo in and out.
    explicit ChannelMapEditorStage(const std::string& track, const std::string& sideChain = "",
                                   const std::string& sideChainName = "")
        : ChannelMapEditorStage(new AudioFilterDouble, track, sideChain, sideChainName) {}
    ChannelMapEditorStage(const FilterPtr& filter, const std::string& track, const std::string& sideChain = "",
                          const std::string& sideChainName = "");
    /// Another view of the same filter.
    explicit ChannelMapEditorStage(const FilterPtr& filter);
    ~ChannelMapEditorStage();

    void SetTrack(const std::string& track, const std::string& sideChain = "", const std::string& sideChainName = "");
    void Show();

    AudioFilterDouble& GetFilter() { return *mFilter; }
    const FilterPtr& GetFilterPtr() { return mFilter; }
    zelaudiofilterhostui::AudioFilterChannelMapEditorView& GetView() { return *mView; }
    MapViewPtr& GetViewPtr() { return mView; }
    QScrollArea& GetArea() { return *mArea; }

    std::vector<zelui::controls::UI_StaticText*> GetHeaders();
    std::vector<Row> GetRows();
    zelui::controls::UI_TextButton& GetButton();

    /// "Left | Left | (None) | Left" for a row: what is to be read in it, from the left.
    std::string Read(std::size_t row);
    static std::vector<std::string> GetItems(const zelui::controls::UI_Popup& popup);

    static QComboBox& GetCombo(zelui::controls::UI_Popup& popup) {
        return dynamic_cast<QComboBox&>(*zelui::qt::GetWidget(popup));
    }
    /// Opens the popup with the mouse. It has to be shown.
    static void Open(zelui::controls::UI_Popup& popup);
    /// Opens the popup and chooses an item with keys.
    static void Choose(zelui::controls::UI_Popup& popup, int item);
    void PressReset();

    const ChannelMap& GetInputs() { return mFilter->GetChannelMap(zelaudiofilterhost::AudioFilter::kInput); }
    const ChannelMap& GetOutputs() { return mFilter->GetChannelMap(zelaudiofilterhost::AudioFilter::kOutput); }
    void Assign(zelaudiofilterhost::AudioFilter::Direction direction, int effect, int target) {
        mFilter->AssignChannelMapping(direction, effect, target);
    }
    /// What the interactive signal told, each time its four maps.
    const std::vector<std::vector<ChannelMap>>& GetTold() const { return mTold; }

private:
    void MakeView();

    FilterPtr mFilter;
    MapViewPtr mView;
    std::unique_ptr<QScrollArea> mArea;
    std::vector<std::vector<ChannelMap>> mTold;
};

}  // namespace zeltests
