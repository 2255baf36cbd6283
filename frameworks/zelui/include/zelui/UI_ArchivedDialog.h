#pragma once

#include <memory>
#include <string>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <zelcore/ustring.h>

#include <zelui/OS_Dialog.h>
#include <zelui/OS_ResourceManager.h>
#include <zelui/UI_Button.h>
#include <zelui/UI_SubView.h>

namespace zelui {
namespace ui {

/// A dialog whose nodes come from a layout archive: an XML resource that says which control stands where, what it
/// reads, and what becomes of it when the window is resized (see docs/layout-archives.md). Texts are localised as they
/// are read; controls whose text needs more room than the archive gives them get it, and move what stands behind them.
///
/// It has no buttons of its own: SetOkButton and SetCancelButton make two of the archive's the ones that close it, and
/// that Return and Escape stand for. Return in a control that uses Return itself stays there.
///
/// Main thread only. Reference-counted like every dialog.
class ZELUI_API UI_ArchivedDialog : public UI_Dialog, public OS_Dialog {
public:
    /// Makes the node of a class name of the archive; null leaves it to the node's adapter.
    typedef boost::function<boost::intrusive_ptr<UI_Node>(const zelcore::ustring& className)> NodeFactory;

    /// The first node, from the root down and in archive order, that has this id; null when there is none.
    boost::intrusive_ptr<UI_Node> GetNodeForID(const std::string& id) const;
    /// The same as the class that it is expected to be; null when it is another one.
    template <typename T>
    boost::intrusive_ptr<T> GetNodeForIDAs(const std::string& id) const {
        return boost::intrusive_ptr<T>(dynamic_cast<T*>(GetNodeForID(id).get()));
    }
    /// The root of the nodes; as large as the inside of the window's frame.
    const boost::intrusive_ptr<UI_SubView>& GetContentNode() const;

    /// The button closes the dialog with kResponseOK, or with kResponseCancel; null takes that away again. Whoever has
    /// the button tell somebody else, too, is told first. Return presses OK, which is drawn so, unless it is disabled
    /// or hidden. Escape and closing the window press Cancel; while it is disabled they do nothing, and without it they
    /// close the dialog all the same.
    void SetOkButton(const boost::intrusive_ptr<controls::UI_Button>& button);
    /// The same for the button that cancels.
    void SetCancelButton(const boost::intrusive_ptr<controls::UI_Button>& button);

    /// The drawing supplier that the dialog was made with.
    const drawbot::SupplierInterface* GetSupplier() const { return mSupplier; }

protected:
    /// Throws ArchiveError when the resource is not there or is no layout archive. `supplier` (null takes the screen's)
    /// and `resources` outlive the dialog; `parent` is the window that it belongs to, or null.
    UI_ArchivedDialog(const drawbot::SupplierInterface* supplier, const utility::OS_ResourceManager* resources,
                      const std::string& archiveName, const zelcore::ustring& title, HWND parent,
                      const NodeFactory& nodeFactory);
    ~UI_ArchivedDialog() override;

    /// Has Cancel stand to the left of OK, or the other way round, where the platform's people expect it: on macOS the
    /// two trade places, elsewhere nothing happens.
    static void FlipNodePositionsOnMac(UI_Node& ok, UI_Node& cancel);

private:
    class ArchivedPeer;
    UI_ArchivedDialog(const drawbot::SupplierInterface* supplier, ArchivedPeer* peer);
    ArchivedPeer& GetArchivedPeer() const;
    /// As if the user had pressed it.
    static void Press(controls::UI_Button& button);

    const drawbot::SupplierInterface* const mSupplier;
};

}  // namespace ui
}  // namespace zelui
