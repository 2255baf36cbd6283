#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <string>
#include <vector>

#include <zelcore/Threads.h>
#include <zelui/Application.h>
#include <zelui/ArchiveError.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_NodeManager.h>
#include <zelui/UI_Popup.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>
#include <zelui/UI_TextEdit.h>

#include "ArchivedDialogTools.h"
#include "NodeTools.h"

namespace zeltests {

using testing::ElementsAre;
using testing::HasSubstr;
using zelcore::geom::RectF;
using zelcore::threads::AsyncCallFromMainThread;
using zelui::controls::UI_Button;
using zelui::controls::UI_TextEdit;
using zelui::ui::UI_DialogViewContainer;

namespace {

const auto kOK = UI_DialogViewContainer::kResponseOK;
const auto kCancel = UI_DialogViewContainer::kResponseCancel;

class UI_ArchivedDialogTest : public testing::Test {
protected:
    ~UI_ArchivedDialogTest() override {
        EXPECT_FALSE(zelui::Application::CancelActiveDialog()) << "a dialog was left open";
    }
};

boost::intrusive_ptr<UI_Button> ButtonIn(const TestDialogPtr& dialog, const char* id) {
    return dialog->GetNodeForIDAs<UI_Button>(id);
}

/// Writes down when a button is used.
void Record(const TestDialogPtr& dialog, const char* id, std::vector<std::string>& told) {
    ButtonIn(dialog, id)->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>([&told, id](auto*) {
        told.push_back(id);
    }));
}

/// Writes down the response of each closing.
void RecordClosing(const TestDialogPtr& dialog, std::vector<std::string>& told) {
    dialog->SetPostCloseCallback([&told](UI_DialogViewContainer::Response response) {
        told.push_back("closed " + std::to_string(response));
        return true;
    });
}

std::string ErrorOf(const std::string& archive, const TestDialog::NodeFactory& factory = {}) {
    try {
        const TestDialogPtr dialog(new TestDialog(archive, factory));
    } catch (const zelui::ui::ArchiveError& error) {
        return error.what();
    }
    return "no error";
}

void TypeInto(const TestDialogPtr& dialog, const char* text) {
    dialog->GetNodeForID("Edit")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

}  // namespace

// Archives and nodes

TEST_F(UI_ArchivedDialogTest, AnArchiveThatIsNotThereIsAnErrorThatNamesIt) {
    class Lost : public zelui::ui::UI_ArchivedDialog {
    public:
        explicit Lost(const zelui::utility::OS_ResourceManager* resources)
            : UI_ArchivedDialog(nullptr, resources, "Missing", U(""), nullptr, {}) {}
    };
    const TestResources resources;
    for (const TestResources* one : {&resources, static_cast<const TestResources*>(nullptr)}) {
        try {
            const boost::intrusive_ptr<Lost> dialog(new Lost(one));
            FAIL() << "a dialog without an archive";
        } catch (const zelui::ui::ArchiveError& error) {
            EXPECT_STREQ(error.what(), "The layout archive \"Missing\": there is no such resource");
        }
    }
}

TEST_F(UI_ArchivedDialogTest, ABrokenArchiveIsAnErrorAndLeavesNothingBehind) {
    const std::size_t nodes = zelui::ui::UI_NodeManager::Get(false).GetNodeCount();
    const qsizetype windows = QApplication::topLevelWidgets().size();
    EXPECT_THAT(ErrorOf("<prop.map version=\"3\"/>"), HasSubstr("The layout archive \"Test\": line 1: the version"));
    NodeText root = TestRoot();
    root.children.push_back(Control("UI_Dial", "Dial", {}));
    EXPECT_THAT(ErrorOf(Archive(root.Write())), HasSubstr("\"zelui::controls::UI_Dial\""));
    EXPECT_EQ(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
    EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
}

TEST_F(UI_ArchivedDialogTest, NodesThatDoNotFitTogetherAreErrors) {
    NodeText button = Button("B", {0, 0, 10, 10}, "B");
    EXPECT_THAT(ErrorOf(Archive(button.Write())), HasSubstr("the root is no UI_SubView"));
    button.children.push_back(Button("C", {}, "C"));
    NodeText root;
    root.children.push_back(button);
    EXPECT_THAT(ErrorOf(Archive(root.Write())), HasSubstr("can have none"));
    NodeText twice;
    twice.children.resize(2);
    for (NodeText& child : twice.children) child.className = "Same";
    const TestNodePtr same(new TestNode);
    EXPECT_THAT(ErrorOf(Archive(twice.Write()), [&](const zelcore::ustring&) { return same; }),
                HasSubstr("stands somewhere else"));
}

TEST_F(UI_ArchivedDialogTest, TheFactoryIsAskedFirstAndForClassNamesOnly) {
    NodeText root = TestRoot();
    root.children[0].className = "Mine";
    root.children[3].className = "Nobodys";
    std::vector<zelcore::ustring> asked;
    const TestNodePtr mine(new TestNode);
    const TestDialogPtr dialog(new TestDialog(
        Archive(root.Write()), [&](const zelcore::ustring& name) -> boost::intrusive_ptr<zelui::ui::UI_Node> {
            asked.push_back(name);
            return name == U("Mine") ? mine : nullptr;
        }));
    EXPECT_THAT(asked, ElementsAre(U("Mine"), U("Nobodys")));
    EXPECT_EQ(dialog->GetNodeForID("Other"), mine);
    EXPECT_EQ(mine->UI_GetLocalRectF(), (RectF{10, 10, 100, 22}));
    EXPECT_TRUE(mine->UI_IsShown());
    EXPECT_NE(dialog->GetNodeForIDAs<zelui::controls::UI_TextButton>("OK"), nullptr);
}

TEST_F(UI_ArchivedDialogTest, ThePropertiesOfTheArchiveAreTheNodes) {
    NodeText root = TestRoot();
    root.children[0].node = Pair("tooltip", Text("A tip")) + Pair("visible", Bool(false));
    root.children[1].kind = "UI_ControlView";
    root.children[1].properties = Pair("enabled", Bool(false)) + Pair("wantsFocus", Bool(false));
    root.children[2].kind = "UI_Checkbox";
    root.children[2].properties = Pair("checked", Bool(true)) + Pair("text", Text("($$$/c=Check)"));
    NodeText text = Control("UI_StaticText", "Text", {0, 100, 50, 20});
    text.kind = "UI_StaticText";
    text.properties = Pair("text", Text("A text")) +
                      Pair("alignment", List(Pair(".aptype", Signed(2)) + Pair("selected", Signed(1))));
    root.children.push_back(text);
    const TestDialogPtr dialog(new TestDialog(Archive(root.Write())));
    EXPECT_EQ(dialog->GetNodeForID("Other")->UI_GetToolTip(), U("A tip"));
    EXPECT_FALSE(dialog->GetNodeForID("Other")->UI_IsShown());
    EXPECT_TRUE(dialog->GetNodeForID("Edit")->UI_IsDisabled());
    EXPECT_FALSE(dialog->GetNodeForID("Edit")->UI_WantsKeyboardFocus());
    const auto checkbox = dialog->GetNodeForIDAs<zelui::controls::UI_Checkbox>("Check");
    EXPECT_TRUE(checkbox->IsChecked());
    EXPECT_EQ(checkbox->GetText(), U("Check"));
    const auto label = dialog->GetNodeForIDAs<zelui::controls::UI_StaticText>("Text");
    EXPECT_EQ(label->GetValue(), U("A text"));
    EXPECT_EQ(label->GetAlignment(), zelui::controls::kAlignCenter);
}

TEST_F(UI_ArchivedDialogTest, TheFirstNodeOfAnIdIsFoundFromTheRootDown) {
    NodeText root = TestRoot();
    NodeText box;
    box.id = "Box";
    box.children.push_back(Button("Same", {1, 0, 100, 22}, "1"));
    root.children.insert(root.children.begin(), box);
    root.children.push_back(Button("Same", {2, 0, 100, 22}, "2"));
    const TestDialogPtr dialog(new TestDialog(Archive(root.Write())));
    EXPECT_EQ(dialog->GetNodeForID("Root"), dialog->GetContentNode());
    EXPECT_EQ(dialog->GetNodeForID("Same")->UI_GetLocalRectF().left, 1.0f);
    EXPECT_EQ(dialog->GetNodeForID("Nobody"), nullptr);
    EXPECT_EQ(dialog->GetNodeForIDAs<UI_TextEdit>("Same"), nullptr);
    EXPECT_NE(dialog->GetSupplier(), nullptr);
}

TEST_F(UI_ArchivedDialogTest, TheTabKeyGoesInTheOrderOfTheArchive) {
    const TestDialogPtr dialog = MakeTestDialog();
    ShowDialog(dialog);
    for (const char* id : {"Other", "Edit", "Check", "OK", "Cancel", "Other"}) {
        EXPECT_TRUE(dialog->GetNodeForID(id)->UI_HasKeyboardFocus(false)) << id;
        PressKey(Qt::Key_Tab);
    }
    dialog->UI_Close(kOK);
}

// OK and Cancel

TEST_F(UI_ArchivedDialogTest, AClickOnOkOrCancelEndsTheModalLoopWithItsResponse) {
    const TestDialogPtr dialog = MakeTestDialog();
    AsyncCallFromMainThread([&] { QTest::mouseClick(WidgetIn(dialog, "OK"), Qt::LeftButton); });
    EXPECT_EQ(dialog->RunModal(), kOK);
    AsyncCallFromMainThread([&] { QTest::mouseClick(WidgetIn(dialog, "Cancel"), Qt::LeftButton); });
    EXPECT_EQ(dialog->RunModal(), kCancel);
    EXPECT_FALSE(dialog->UI_IsOpen());
}

TEST_F(UI_ArchivedDialogTest, WhoeverHasTheButtonTellThemIsToldBeforeTheDialogCloses) {
    const TestDialogPtr dialog = MakeTestDialog();
    std::vector<std::string> told;
    Record(dialog, "OK", told);
    Record(dialog, "Cancel", told);
    RecordClosing(dialog, told);
    ShowDialog(dialog);
    QTest::mouseClick(WidgetIn(dialog, "OK"), Qt::LeftButton);
    ShowDialog(dialog);
    QTest::mouseClick(WidgetIn(dialog, "Cancel"), Qt::LeftButton);
    EXPECT_THAT(told, ElementsAre("OK", "closed 1", "Cancel", "closed 0"));
}

TEST_F(UI_ArchivedDialogTest, ReturnIsAClickOnOk) {
    const TestDialogPtr dialog = MakeTestDialog();
    std::vector<std::string> told;
    Record(dialog, "OK", told);
    RecordClosing(dialog, told);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        ShowDialog(dialog);
        dialog->GetNodeForID("Edit")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
        PressKey(key);
        EXPECT_FALSE(dialog->UI_IsOpen());
    }
    EXPECT_THAT(told, ElementsAre("OK", "closed 1", "OK", "closed 1"));
}

TEST_F(UI_ArchivedDialogTest, ReturnInAnotherButtonPressesThatOne) {
    const TestDialogPtr dialog = MakeTestDialog();
    std::vector<std::string> told;
    Record(dialog, "Other", told);
    RecordClosing(dialog, told);
    ShowDialog(dialog);
    ASSERT_TRUE(dialog->GetNodeForID("Other")->UI_HasKeyboardFocus(false));
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->GetNodeForID("Cancel")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    PressKey(Qt::Key_Return);
    EXPECT_THAT(told, ElementsAre("Other", "closed 0"));
}

TEST_F(UI_ArchivedDialogTest, ReturnAndEscapeInAFieldThatWasChangedAreTheFields) {
    const TestDialogPtr dialog = MakeTestDialog();
    ShowDialog(dialog);
    TypeInto(dialog, "ab");
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(dialog->UI_IsOpen());
    QTest::keyClicks(QApplication::focusWidget(), "c");
    PressKey(Qt::Key_Escape);
    EXPECT_TRUE(dialog->UI_IsOpen());
    EXPECT_EQ(dialog->GetNodeForIDAs<UI_TextEdit>("Edit")->GetValue(), U("ab"));
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(dialog->UI_IsOpen());
}

TEST_F(UI_ArchivedDialogTest, ReturnDoesNothingWhileOkIsDisabledOrHidden) {
    const TestDialogPtr dialog = MakeTestDialog();
    ShowDialog(dialog);
    dialog->GetNodeForID("Edit")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    dialog->GetNodeForID("OK")->UI_SetDisabled(true);
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->GetNodeForID("OK")->UI_SetDisabled(false);
    dialog->GetNodeForID("OK")->UI_Hide();
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->GetNodeForID("OK")->UI_Show(true);
    PressKey(Qt::Key_Return);
    EXPECT_FALSE(dialog->UI_IsOpen());
}

TEST_F(UI_ArchivedDialogTest, AKeyHeldDownSinceBeforeDoesNotCloseIt) {
    const TestDialogPtr dialog = MakeTestDialog();
    ShowDialog(dialog);
    dialog->GetNodeForID("Edit")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    SendKey(QApplication::focusWidget(), QEvent::KeyPress, Qt::Key_Return, true);
    SendKey(QApplication::focusWidget(), QEvent::KeyPress, Qt::Key_Escape, true);
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->UI_Close(kOK);
}

TEST_F(UI_ArchivedDialogTest, EscapeClosingTheWindowAndCancelFromOutsideAreAClickOnCancel) {
    const TestDialogPtr dialog = MakeTestDialog();
    std::vector<std::string> told;
    Record(dialog, "Cancel", told);
    RecordClosing(dialog, told);
    ShowDialog(dialog);
    PressKey(Qt::Key_Escape);
    ShowDialog(dialog);
    WindowOf(dialog)->close();
    ShowDialog(dialog);
    EXPECT_TRUE(zelui::Application::CancelActiveDialog());
    EXPECT_THAT(told, ElementsAre("Cancel", "closed 0", "Cancel", "closed 0", "Cancel", "closed 0"));
}

TEST_F(UI_ArchivedDialogTest, WhileCancelIsDisabledNothingCancels) {
    const TestDialogPtr dialog = MakeTestDialog();
    dialog->GetNodeForID("Cancel")->UI_SetDisabled(true);
    ShowDialog(dialog);
    PressKey(Qt::Key_Escape);
    WindowOf(dialog)->close();
    EXPECT_FALSE(zelui::Application::CancelActiveDialog());
    EXPECT_TRUE(dialog->UI_IsOpen());
    dialog->UI_Close(kOK);
}

TEST_F(UI_ArchivedDialogTest, WithoutAnOkOrCancelButtonEscapeStillCloses) {
    const TestDialogPtr dialog = MakeTestDialog();
    dialog->SetOkButton(nullptr);
    dialog->SetCancelButton(nullptr);
    ShowDialog(dialog);
    QTest::mouseClick(WidgetIn(dialog, "OK"), Qt::LeftButton);
    QTest::mouseClick(WidgetIn(dialog, "Cancel"), Qt::LeftButton);
    dialog->GetNodeForID("Edit")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    PressKey(Qt::Key_Return);
    EXPECT_TRUE(dialog->UI_IsOpen());
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(dialog->UI_IsOpen());
}

TEST_F(UI_ArchivedDialogTest, OkIsDrawnAsTheOneThatReturnStandsFor) {
    const TestDialogPtr dialog = MakeTestDialog();
    ShowDialog(dialog);
    const QImage asDefault = WidgetIn(dialog, "OK")->grab().toImage();
    dialog->SetOkButton(nullptr);
    const QImage plain = WidgetIn(dialog, "OK")->grab().toImage();
    dialog->SetOkButton(ButtonIn(dialog, "OK"));
    EXPECT_NE(asDefault, plain);
    EXPECT_EQ(WidgetIn(dialog, "OK")->grab().toImage(), asDefault);
    dialog->UI_Close(kOK);
}

TEST_F(UI_ArchivedDialogTest, EscapeInAnOpenPopupClosesThePopupAlone) {
    NodeText root = TestRoot();
    root.children.push_back(Control("UI_Popup", "Popup", {10, 100, 100, 22}));
    const TestDialogPtr dialog(new TestDialog(Archive(root.Write())));
    ShowDialog(dialog);
    dialog->GetNodeForIDAs<zelui::controls::UI_Popup>("Popup")->AddItem(U("One"));
    QComboBox* const box = WindowOf(dialog)->findChild<QComboBox*>("Popup");
    ASSERT_NE(box, nullptr);
    box->showPopup();
    ASSERT_TRUE(ProcessUntil([&] { return box->view()->isVisible(); }));
    QTest::keyClick(box->view(), Qt::Key_Escape);
    EXPECT_TRUE(ProcessUntil([&] { return !box->view()->isVisible(); }));
    EXPECT_TRUE(dialog->UI_IsOpen());
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(dialog->UI_IsOpen());
}

// Lifetime

TEST_F(UI_ArchivedDialogTest, AHandlerOfItsButtonMayLetGoOfTheDialog) {
    const std::size_t nodes = zelui::ui::UI_NodeManager::Get(false).GetNodeCount();
    for (const char* id : {"OK", "Cancel", "Other"}) {
        TestDialogPtr dialog = MakeTestDialog();
        ButtonIn(dialog, id)->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>([&dialog](auto*) {
            std::exchange(dialog, nullptr)->UI_Close(kOK);
        }));
        ShowDialog(dialog);
        QTest::mouseClick(WidgetIn(dialog, id), Qt::LeftButton);
        EXPECT_EQ(dialog, nullptr);
        Settle();
    }
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        TestDialogPtr dialog = MakeTestDialog();
        dialog->SetPostCloseCallback([&dialog](auto) {
            dialog.reset();
            return true;
        });
        ShowDialog(dialog);
        dialog->GetNodeForID("Edit")->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
        PressKey(key);
        EXPECT_EQ(dialog, nullptr);
        Settle();
    }
    EXPECT_EQ(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
}

TEST_F(UI_ArchivedDialogTest, ItsKeyHandlerMayLetGoOfTheDialog) {
    TestDialogPtr dialog = MakeTestDialog();
    dialog->onKey = [&dialog](const zelui::ui::KeyboardEvent&) {
        if (dialog) std::exchange(dialog, nullptr)->UI_Close(kOK);
        return false;
    };
    ShowDialog(dialog);
    QTest::keyPress(QApplication::focusWidget(), Qt::Key_A);
    EXPECT_EQ(dialog, nullptr);
    Settle();
}

TEST_F(UI_ArchivedDialogTest, ItsSizeHandlerMayLetGoOfTheDialog) {
    TestDialogPtr dialog = MakeTestDialog();
    dialog->onSized = [&dialog] {
        if (dialog) std::exchange(dialog, nullptr)->UI_Close(kOK);
    };
    ShowDialog(dialog);
    WindowOf(dialog)->resize(500, 400);
    EXPECT_TRUE(ProcessUntil([&] { return dialog == nullptr; }));
    Settle();
}

TEST_F(UI_ArchivedDialogTest, ItsNodesLeaveTheWindowWithTheDialog) {
    TestDialogPtr dialog = MakeTestDialog();
    ShowDialog(dialog);
    const boost::intrusive_ptr<zelui::ui::UI_Node> root = dialog->GetContentNode();
    const boost::intrusive_ptr<UI_Button> ok = ButtonIn(dialog, "OK");
    dialog->UI_Close(kOK);
    EXPECT_TRUE(root->UI_IsInWindow());
    dialog.reset();
    EXPECT_FALSE(root->UI_IsInWindow());
    EXPECT_EQ(root->UI_GetParentNode(), nullptr);
    EXPECT_EQ(zelui::qt::GetWidget(*ok), nullptr);
}

TEST_F(UI_ArchivedDialogTest, AnExceptionOfAHandlerStaysInIt) {
    const TestDialogPtr dialog = MakeTestDialog();
    dialog->onKey = [](const zelui::ui::KeyboardEvent&) -> bool { throw std::runtime_error("on purpose"); };
    dialog->onSized = [] { throw std::runtime_error("on purpose"); };
    ShowDialog(dialog);
    TypeInto(dialog, "a");
    WindowOf(dialog)->resize(500, 400);
    EXPECT_TRUE(ProcessUntil([&] { return !dialog->sizes.empty(); }));
    EXPECT_EQ(dialog->GetNodeForIDAs<UI_TextEdit>("Edit")->GetValue(), U("a"));
    dialog->onKey = {};
    dialog->onSized = {};
    dialog->UI_Close(kOK);
}

TEST_F(UI_ArchivedDialogTest, OkAndCancelTradePlacesNowhereButOnMac) {
    const TestDialogPtr dialog = MakeTestDialog();
    const auto ok = dialog->GetNodeForID("OK");
    const auto cancel = dialog->GetNodeForID("Cancel");
    TestDialog::FlipNodePositionsOnMac(*ok, *cancel);
#ifdef __APPLE__
    EXPECT_GT(ok->UI_GetLocalRectF().left, cancel->UI_GetLocalRectF().left);
#else
    EXPECT_EQ(ok->UI_GetLocalRectF(), (RectF{180, 270, 100, 22}));
    EXPECT_EQ(cancel->UI_GetLocalRectF(), (RectF{290, 270, 100, 22}));
#endif
}

}  // namespace zeltests
