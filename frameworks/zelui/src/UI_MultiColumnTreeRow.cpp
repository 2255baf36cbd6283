#include <zelui/UI_MultiColumnTreeRow.h>

#include "TreeImpl.h"

namespace zelui {
namespace controls {

UI_MultiColumnTreeRow::UI_MultiColumnTreeRow() : mTree(nullptr), mPlace(0), mIsSelected(false), mIsVisible(false) {}

UI_MultiColumnTreeRow::~UI_MultiColumnTreeRow() = default;

boost::intrusive_ptr<ui::UI_SubView> UI_MultiColumnTreeRow::GetCellView(int index) {
    return mTree != nullptr ? mTree->mImpl->GetCells().Get(this, index) : nullptr;
}

}  // namespace controls
}  // namespace zelui
