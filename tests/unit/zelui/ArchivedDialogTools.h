#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <QApplication>
#include <QTest>
#include <zelui/OS_ResourceManager.h>
#include <zelui/UI_ArchivedDialog.h>

#include "ArchiveTools.h"
#include "ControlStage.h"
#include "DialogTools.h"
#include "NodeTools.h"

namespace zeltests {

/// Resources that a test gives.
class TestResources : public zelui::utility::OS_ResourceManager {
public:
    TestResources() : OS_ResourceManager(nullptr) {}
    explicit TestResources(const std::string& archive) : TestResources() { archives["Test"] = archive; }

    std::map<std::string, std::string> archives;

    std::optional<std::string> ReadResource(const std::string& type, const std::string& name) const override {
        const auto found = archives.find(name);
        if (type != "xml" || found == archives.end()) return std::nullopt;
        return found->second;
    }
};

/// A dialog that keeps what it was told, and calls what a test has put in.
class TestDialog : public zelui::ui::UI_ArchivedDialog {
public:
    explicit TestDialog(const std::string& archive, const NodeFactory& factory = {}, HWND parent = nullptr)
        : TestDialog(TestResources(archive), factory, parent) {}

    std::vector<int> keys;  ///< codes of the keys that were pressed
    std::vector<zelcore::geom::RectF> sizes;
    std::function<bool(const zelui::ui::KeyboardEvent&)> onKey;
    std::function<void()> onSized;

    bool UI_DoPreKeyboardEvent(const zelui::ui::KeyboardEvent& event) override {
        if (event.GetKind() == zelui::ui::KeyboardEvent::kKeyDown) keys.push_back(event.GetOSCode());
        return onKey && onKey(event);
    }
    void UI_SizeChanged(const zelcore::geom::RectF& frame) override {
        UI_ArchivedDialog::UI_SizeChanged(frame);
        sizes.push_back(frame);
        if (onSized) onSized();
    }
    using UI_ArchivedDialog::FlipNodePositionsOnMac;

private:
    TestDialog(const TestResources& resources, const NodeFactory& factory, HWND parent)
        : UI_ArchivedDialog(nullptr, &resources, "Test", U("A title [*]"), parent, factory) {}
};

typedef boost::intrusive_ptr<TestDialog> TestDialogPtr;

inline QWidget* WindowOf(const TestDialogPtr& dialog) { return zelui::qt::FindWidget(dialog->UI_GetPlatformWindow()); }

inline QWidget* WidgetIn(const TestDialogPtr& dialog, const std::string& id) {
    const boost::intrusive_ptr<zelui::ui::UI_Node> node = dialog->GetNodeForID(id);
    return node ? zelui::qt::GetWidget(*node) : nullptr;
}

/// Shows the dialog and waits until it is the active window. Without a display a window that was active when it was
/// hidden becomes so again only after another one.
inline void ShowDialog(const TestDialogPtr& dialog) {
    QWidget before;
    ShowActive(before);
    dialog->UI_ShowModeless();
    EXPECT_TRUE(ProcessUntil([&] { return WindowOf(dialog)->isActiveWindow(); }));
}

/// Presses a key where the focus is.
inline void PressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
}

inline NodeText Control(const std::string& kind, const std::string& id, const zelcore::geom::RectF& bounds,
                        long constraints = 0) {
    NodeText node;
    node.adapter = "zelui::controls::" + kind;
    node.id = id;
    node.bounds = bounds;
    node.constraints = constraints;
    return node;
}

/// 400 by 300: a button, a field, a check box; OK and Cancel at the right bottom.
inline NodeText TestRoot() {
    NodeText root;
    root.id = "Root";
    root.bounds = {0, 0, 400, 300};
    root.children = {Button("Other", {10, 10, 100, 22}, "Other"), Control("UI_TextEdit", "Edit", {10, 40, 380, 22}, 4),
                     Control("UI_Checkbox", "Check", {10, 70, 100, 20}), Button("OK", {180, 270, 100, 22}, "OK", 15),
                     Button("Cancel", {290, 270, 100, 22}, "Cancel", 15)};
    return root;
}

inline TestDialogPtr MakeTestDialog() {
    const TestDialogPtr dialog(new TestDialog(Archive(TestRoot().Write())));
    dialog->SetOkButton(dialog->GetNodeForIDAs<zelui::controls::UI_Button>("OK"));
    dialog->SetCancelButton(dialog->GetNodeForIDAs<zelui::controls::UI_Button>("Cancel"));
    return dialog;
}

}  // namespace zeltests
