#include "ChainView.h"

#include <QPushButton>
#include <QTest>

#include <zelui/QtBridge.h>

#include "SessionFile.h"
#include "WindowStage.h"

namespace zeltests {

using tessaly::ChainView;

/// The list of effects in the window.
class ChainViewTest : public WindowStage {
protected:
    ChainViewTest() : mView(mWindow->GetChainView()) {
        AddEffect("Zel Gain");
        AddEffect("Zel Gain 3");
        AddEffect("Zel Side Chain");
    }

    std::vector<std::string> GetRows() {
        std::vector<std::string> rows;
        for (int i = 0; i < mView.topLevelItemCount(); ++i)
            rows.push_back(mView.topLevelItem(i)->text(0).toStdString());
        return rows;
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&mView, key, modifiers); }
    bool IsBypassed(std::size_t index) { return mWindow->GetSession().GetEffects()[index]->IsBypassed(); }

    ChainView& mView;
};

TEST_F(ChainViewTest, ShowsNameVendorFormatAndThatAnEffectIsOn) {
    EXPECT_EQ(GetRows(), GetChain());
    const QTreeWidgetItem* const row = mView.topLevelItem(1);
    EXPECT_EQ(row->text(1), "Zel Test Plug-ins");
    EXPECT_EQ(row->text(2), "VST3");
    EXPECT_EQ(row->text(3), "");
    EXPECT_EQ(row->checkState(0), Qt::Checked);
}

TEST_F(ChainViewTest, TheSpaceBarSwitchesAnEffectOffAndOn) {
    mView.SetCurrentIndex(1);
    Press(Qt::Key_Space);
    EXPECT_TRUE(IsBypassed(1));
    EXPECT_EQ(mView.topLevelItem(1)->text(3), "Bypassed");
    EXPECT_FALSE(mWindow->GetPlayer().IsPlaying());
    Press(Qt::Key_Space);
    EXPECT_FALSE(IsBypassed(1));
    EXPECT_EQ(mView.topLevelItem(1)->text(3), "");
}

TEST_F(ChainViewTest, TheSpaceBarSwitchesWhicheverColumnIsTheCurrentOne) {
    mView.setCurrentItem(mView.topLevelItem(2), 2);
    Press(Qt::Key_Space);
    EXPECT_TRUE(IsBypassed(2));
    Press(Qt::Key_Space);
    EXPECT_FALSE(IsBypassed(2));
}

TEST_F(ChainViewTest, TheChosenEffectStaysChosenWhereverItGoes) {
    mView.SetCurrentIndex(0);
    mWindow->GetSession().Move(0, 2);
    EXPECT_EQ(mView.GetCurrentIndex(), 2);
    Trigger("Undo");
    EXPECT_EQ(mView.GetCurrentIndex(), 0);
    mView.SetCurrentIndex(1);
    mWindow->GetSession().Remove(0);
    EXPECT_EQ(mView.GetCurrentIndex(), 0);
    Trigger("Undo");
    EXPECT_EQ(mView.GetCurrentIndex(), 1);
}

TEST_F(ChainViewTest, AClickIntoTheBoxSwitchesAnEffectOff) {
    const QRect row = mView.visualItemRect(mView.topLevelItem(0));
    QTest::mouseClick(mView.viewport(), Qt::LeftButton, {}, QPoint(row.left() + 10, row.center().y()));
    EXPECT_TRUE(IsBypassed(0));
}

TEST_F(ChainViewTest, AltAndArrowsMoveTheChosenEffectWhichStaysChosen) {
    mView.SetCurrentIndex(0);
    Press(Qt::Key_Down, Qt::AltModifier);
    Press(Qt::Key_Down, Qt::AltModifier);
    Press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain 3", "Zel Side Chain", "Zel Gain"}));
    EXPECT_EQ(GetRows(), GetChain());
    EXPECT_EQ(mView.GetCurrentIndex(), 2);
    Press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain 3", "Zel Gain", "Zel Side Chain"}));
    EXPECT_EQ(mView.GetCurrentIndex(), 1);
}

TEST_F(ChainViewTest, ButtonsMoveAndRemove) {
    mView.SetCurrentIndex(2);
    Click("UpButton");
    Click("UpButton");
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Side Chain", "Zel Gain", "Zel Gain 3"}));
    Click("DownButton");
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain", "Zel Side Chain", "Zel Gain 3"}));
    Click("RemoveButton");
    EXPECT_EQ(GetRows(), std::vector<std::string>({"Zel Gain", "Zel Gain 3"}));
    EXPECT_EQ(mView.GetCurrentIndex(), 1);
}

TEST_F(ChainViewTest, DeleteRemovesAndTheEditMenuBringsTheSameEffectBack) {
    const tessaly::ChainEffectPtr before = mWindow->GetSession().GetEffects()[1];
    mView.SetCurrentIndex(1);
    Press(Qt::Key_Delete);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain", "Zel Side Chain"}));
    EXPECT_EQ(Find<QAction>("Undo")->text().toStdString(), "&Undo Remove Zel Gain 3");
    Trigger("Undo");
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain", "Zel Gain 3", "Zel Side Chain"}));
    EXPECT_EQ(mWindow->GetSession().GetEffects()[1], before);
    EXPECT_EQ(GetRows(), GetChain());
    Trigger("Redo");
    EXPECT_EQ(GetRows(), std::vector<std::string>({"Zel Gain", "Zel Side Chain"}));
}

TEST_F(ChainViewTest, BypassMoveAndInsertAreUndoneOneByOne) {
    mView.SetCurrentIndex(0);
    Press(Qt::Key_Space);
    Press(Qt::Key_Down, Qt::AltModifier);
    Trigger("Undo");
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain", "Zel Gain 3", "Zel Side Chain"}));
    EXPECT_TRUE(IsBypassed(0));
    Trigger("Undo");
    EXPECT_FALSE(IsBypassed(0));
    EXPECT_EQ(mView.topLevelItem(0)->checkState(0), Qt::Checked);
    Trigger("Undo");
    EXPECT_EQ(GetRows(), std::vector<std::string>({"Zel Gain", "Zel Gain 3"}));
}

TEST_F(ChainViewTest, WithoutAChosenEffectItsButtonsAreOff) {
    mView.SetCurrentIndex(-1);
    for (const char* const name :
         {"EditorButton", "ParametersButton", "ChannelsButton", "UpButton", "DownButton", "RemoveButton"}) {
        EXPECT_FALSE(Find<QPushButton>(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(Find<QPushButton>("AddEffectButton")->isEnabled());
}

TEST_F(ChainViewTest, AMissingPluginIsShownAndKeptAndSaysWhy) {
    tessaly::SessionRecord record;
    record.effects.resize(1);
    record.effects[0].componentId = zelui::qt::FromQString("VST-00000000");
    record.effects[0].name = zelui::qt::FromQString("Gone");
    record.effects[0].vendor = zelui::qt::FromQString("Somebody");
    record.effects[0].locator = zelaudiofilterhost::PluginLocator(zelaudiofilterhost::kTechnologyVST,
                                                                  zelui::qt::FromQString("/no/such/plug-in.so"));
    tessaly::SessionFile::Save(mFolder.Path("missing.tessaly"), record);
    mWindow->GetSession().GetUndoStack().clear();
    mWindow->GetSession().Clear();
    ASSERT_TRUE(mWindow->GetFiles().OpenSession(mFolder.Path("missing.tessaly")));
    ASSERT_EQ(GetRows(), std::vector<std::string>({"Gone"}));
    EXPECT_EQ(mView.topLevelItem(0)->text(3), "Missing");
    EXPECT_FALSE(mView.topLevelItem(0)->toolTip(0).isEmpty());
    EXPECT_NE(GetNotice().find("Gone"), std::string::npos) << GetNotice();
    mView.SetCurrentIndex(0);
    EXPECT_FALSE(Find<QPushButton>("EditorButton")->isEnabled());
    EXPECT_TRUE(Find<QPushButton>("RemoveButton")->isEnabled());
    Press(Qt::Key_Return);
    EXPECT_EQ(mWindow->GetEffectWindows().Find(mWindow->GetSession().GetEffects()[0], tessaly::kOwnEditor), nullptr);
}

}  // namespace zeltests
