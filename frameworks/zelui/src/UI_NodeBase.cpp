#include <zelui/UI_NodeBase.h>

#include <zelui/UI_NodeManager.h>

namespace zelui {
namespace ui {

UI_NodeBase::UI_NodeBase() { ++UI_NodeManager::Get(false).mNodeCount; }

UI_NodeBase::~UI_NodeBase() { --UI_NodeManager::Get(false).mNodeCount; }

}  // namespace ui
}  // namespace zelui
