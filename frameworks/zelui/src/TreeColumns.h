#pragma once

#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_MultiColumnTreeHeaderRow.h>

namespace zelui {
namespace controls {

/// The columns of a tree: those of its header, or, without one, plain ones that have nothing but a width.
class UI_MultiColumnTree::TreeColumns {
public:
    static constexpr int kNarrowest = 10;
    static constexpr int kWidest = 100000;
    static constexpr int kUsualWidth = 100;

    TreeColumns();
    ~TreeColumns();

    /// Takes the place of the former header, which has no tree any more then.
    void SetHeader(UI_MultiColumnTreeHeaderRow* header);
    UI_MultiColumnTreeHeaderRow* GetHeader() const { return mHeader.get(); }

    /// 1 to kMaxColumns; what is beyond counts as the nearer end.
    void SetPlainCount(int count);
    int GetCount() const;
    /// Whole and bounded; 0 for a column that is not there. A width that is no number changes nothing.
    int GetWidth(int index) const;
    void SetWidth(int index, float width);
    /// A width that a column can have: whole, and neither too narrow nor too wide; `former` in place of what is no
    /// number.
    static float Bound(float width, float former);
    /// How far from the left edge of the first column it begins.
    int GetLeft(int index) const;

    int GetSortIndex() const;

private:
    float* FindWidth(int index);

    boost::intrusive_ptr<UI_MultiColumnTreeHeaderRow> mHeader;
    std::vector<float> mPlainWidths;
};

}  // namespace controls
}  // namespace zelui
