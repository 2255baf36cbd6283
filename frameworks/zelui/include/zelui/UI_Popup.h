#pragma once

#include <optional>
#include <vector>

#include <zelui/UI_ControlView.h>

namespace zelui {
namespace controls {

/// How a popup looks. The numbers stand in layout archives.
enum PopupType {
    kPopupChoice = 0  ///< a button that shows the chosen item and opens a list of all
};

/// A choice of one item from a list. Items are told apart by their place in the list alone: several may read the same,
/// and an item may be blank.
class ZELUI_API UI_Popup : public UI_ControlView {
public:
    /// `tellsSameChoice` also tells when the user chooses the item that was chosen already; without it such a choice
    /// changes nothing, a text of SetValueString included.
    UI_Popup(PopupType type, bool tellsSameChoice);

    /// Adds an item at the end and returns its index.
    int AddItem(const zelcore::ustring& text);
    /// Removes the item at `index`; nothing when there is none. Items after it move up; the value stays the item that
    /// it was, and becomes 0 when that is removed.
    void RemoveItem(int index);
    /// Removes all items; the value is 0 then. Tells nobody.
    void RemoveAllItems();
    /// How many items there are.
    int GetItemCount() const { return static_cast<int>(mItems.size()); }
    /// Empty for an index that is not there.
    zelcore::ustring GetItemText(int index) const;

    /// Index of the chosen item; 0 for a popup without items. Setting one that is not there changes nothing. Setting it
    /// takes a text of SetValueString away again.
    int GetValue() const { return mValue; }
    /// Chooses an item by its place from 0; tells nobody.
    void SetValue(int index);

    /// Has the closed popup show `text` in place of the chosen item's text, until a value is set or chosen; the value
    /// stays. `tell` calls the function of NotifyWhenChanged.
    void SetValueString(const zelcore::ustring& text, bool tell);
    /// What the closed popup shows.
    zelcore::ustring GetValueString() const;

    /// How large the popup has to be for its widest item, and for the text of SetValueString, to be seen in full;
    /// display units, whole numbers. `drawbot` is of the output that it will be shown on.
    zelcore::geom::PointF UI_GetRecommendedSize(const drawbot::Drawbot& drawbot) const;

protected:
    ~UI_Popup() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    class PopupPeer;
    void TakeUserChoice(int index);

    std::vector<zelcore::ustring> mItems;
    std::optional<zelcore::ustring> mShownText;
    int mValue;
    const PopupType mType;
    const bool mTellsSameChoice;
};

}  // namespace controls
}  // namespace zelui
