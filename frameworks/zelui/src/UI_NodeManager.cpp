#include <zelui/UI_NodeManager.h>

namespace zelui {
namespace ui {

UI_NodeManager::UI_NodeManager() : mLastTimerID(0), mNodeCount(0) {}

// Qt makes what windows need when there is one; nothing has to be made ahead.
UI_NodeManager& UI_NodeManager::Get(bool) {
    // Never destroyed: static nodes of a host may go after it.
    static UI_NodeManager* const manager = new UI_NodeManager;
    return *manager;
}

long UI_NodeManager::GetUniqueTimerID() { return ++mLastTimerID; }

std::size_t UI_NodeManager::GetNodeCount() const { return mNodeCount; }

}  // namespace ui
}  // namespace zelui
