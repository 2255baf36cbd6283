#include "TreeColumns.h"

#include <algorithm>
#include <cmath>

namespace zelui {
namespace controls {

UI_MultiColumnTree::TreeColumns::TreeColumns() : mPlainWidths(1, static_cast<float>(kUsualWidth)) {}

UI_MultiColumnTree::TreeColumns::~TreeColumns() { SetHeader(nullptr); }

void UI_MultiColumnTree::TreeColumns::SetHeader(UI_MultiColumnTreeHeaderRow* header) {
    if (mHeader) mHeader->mTree = nullptr;
    mHeader.reset(header);
}

void UI_MultiColumnTree::TreeColumns::SetPlainCount(int count) {
    const std::size_t bounded = static_cast<std::size_t>(std::clamp(count, 1, kMaxColumns));
    mPlainWidths.resize(bounded, static_cast<float>(kUsualWidth));
}

int UI_MultiColumnTree::TreeColumns::GetCount() const {
    return static_cast<int>(mHeader ? mHeader->mColumns.size() : mPlainWidths.size());
}

float* UI_MultiColumnTree::TreeColumns::FindWidth(int index) {
    if (index < 0 || index >= GetCount()) return nullptr;
    const std::size_t at = static_cast<std::size_t>(index);
    return mHeader ? &mHeader->mColumns[at].width : &mPlainWidths[at];
}

int UI_MultiColumnTree::TreeColumns::GetWidth(int index) const {
    const float* const width = const_cast<TreeColumns*>(this)->FindWidth(index);
    return width != nullptr ? static_cast<int>(*width) : 0;
}

void UI_MultiColumnTree::TreeColumns::SetWidth(int index, float width) {
    float* const own = FindWidth(index);
    if (own == nullptr) return;
    if (mHeader) return mHeader->ChangeWidth(index, width);
    *own = Bound(width, *own);
}

float UI_MultiColumnTree::TreeColumns::Bound(float width, float former) {
    if (std::isnan(width)) return former;
    return std::floor(std::clamp(width, static_cast<float>(kNarrowest), static_cast<float>(kWidest)) + 0.5f);
}

int UI_MultiColumnTree::TreeColumns::GetLeft(int index) const {
    int left = 0;
    for (int i = 0; i < std::min(index, GetCount()); ++i) left += GetWidth(i);
    return left;
}

int UI_MultiColumnTree::TreeColumns::GetSortIndex() const {
    return mHeader ? mHeader->GetIndexOf(mHeader->mSortColumn) : -1;
}

}  // namespace controls
}  // namespace zelui
