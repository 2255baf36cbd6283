#pragma once

#include <cstddef>

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// What concerns all nodes of the process. Main thread.
class ZELUI_API UI_NodeManager {
public:
    /// The one manager. `createWindows` true also makes the hidden platform resources that windows need; false is
    /// enough for everything that only concerns nodes.
    static UI_NodeManager& Get(bool createWindows);

    /// An id for UI_Node::UI_InstallTimer that nobody else has been given; never 0.
    long GetUniqueTimerID();

    /// How many nodes exist now, for leak checks.
    std::size_t GetNodeCount() const;

private:
    friend class UI_NodeBase;
    UI_NodeManager();
    ~UI_NodeManager() = default;
    UI_NodeManager(const UI_NodeManager&) = delete;
    UI_NodeManager& operator=(const UI_NodeManager&) = delete;

    long mLastTimerID;
    std::size_t mNodeCount;
};

}  // namespace ui
}  // namespace zelui
