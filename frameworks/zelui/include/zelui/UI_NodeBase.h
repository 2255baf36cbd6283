#pragma once

#include <boost/noncopyable.hpp>
#include <zelcore/RefCountedObject.h>

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// What all nodes are at the bottom: counted by reference, counted in number (UI_NodeManager tells how many live), not
/// copied. Main thread only.
class ZELUI_API UI_NodeBase : public zelcore::utility::RefCountedObject, private boost::noncopyable {
protected:
    UI_NodeBase();
    ~UI_NodeBase() override;
};

}  // namespace ui
}  // namespace zelui
