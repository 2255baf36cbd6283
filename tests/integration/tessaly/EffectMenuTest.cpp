#include "EffectMenu.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelui/QtAccessibility.h>

#include "WindowStage.h"

namespace zeltests {

using zelaudiofilterhost::PluginModuleInfoManager;

/// The menu that effects are added from, opened by its button.
class EffectMenuTest : public WindowStage {
protected:
    void Open() { Click("AddEffectButton"); }
    QWidget* GetMenu() { return Find("EffectMenu"); }
    QLineEdit* GetSearch() { return Find<QLineEdit>("EffectSearch"); }

    /// "VST3/Maker/Name" of every effect that is not filtered away.
    QStringList GetShown() {
        QStringList shown;
        for (QTreeWidgetItemIterator it(Find<QTreeWidget>("EffectTree"), QTreeWidgetItemIterator::NotHidden); *it;
             ++it) {
            if ((*it)->childCount() > 0) continue;
            QString path = (*it)->text(0);
            for (QTreeWidgetItem* parent = (*it)->parent(); parent; parent = parent->parent())
                path.prepend(parent->text(0) + QLatin1Char('/'));
            shown.append(path);
        }
        return shown;
    }
    void Type(const char* text) { QTest::keyClicks(GetSearch(), QLatin1String(text)); }
    void Press(Qt::Key key) { QTest::keyClick(GetSearch(), key); }
};

TEST_F(EffectMenuTest, OffersEnabledEffectsByFormatAndVendorAndNoInstruments) {
    Open();
    EXPECT_EQ(GetShown(), QStringList({"VST3/Zel Test Plug-ins/Zel Gain 3", "VST/Zel Test Plug-ins/Zel Gain",
                                       "VST/Zel Test Plug-ins/Zel Side Chain"}));
}

TEST_F(EffectMenuTest, LeavesOutWhatIsSwitchedOff) {
    (*PluginModuleInfoManager::GetInstance().PluginInfoBegin())->SetEnabled(false);
    Open();
    EXPECT_FALSE(GetShown().contains("VST/Zel Test Plug-ins/Zel Gain"));
    EXPECT_EQ(GetShown().size(), 2);
}

TEST_F(EffectMenuTest, FindsByWordsOfNameVendorAndFormatInAnyOrder) {
    Open();
    Type("vst3 GAIN plug-ins");
    EXPECT_EQ(GetShown(), QStringList({"VST3/Zel Test Plug-ins/Zel Gain 3"}));
}

TEST_F(EffectMenuTest, TheKeyboardAloneFindsAndAdds) {
    Open();
    ASSERT_TRUE(GetMenu()->isVisible());
    Type("side");
    Press(Qt::Key_Return);
    EXPECT_FALSE(GetMenu()->isVisible());
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Side Chain"}));
}

TEST_F(EffectMenuTest, TheArrowsGoThroughTheEffectsPastTheirGroups) {
    Open();
    const QTreeWidget* const tree = Find<QTreeWidget>("EffectTree");
    const auto current = [tree] { return tree->currentItem() ? tree->currentItem()->text(0) : QString(); };
    Press(Qt::Key_Down);
    EXPECT_EQ(current(), "Zel Gain 3");
    Press(Qt::Key_Down);
    EXPECT_EQ(current(), "Zel Gain");
    Press(Qt::Key_Down);
    EXPECT_EQ(current(), "Zel Side Chain");
    Press(Qt::Key_Down);
    EXPECT_EQ(current(), "Zel Side Chain");
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_EQ(current(), "Zel Gain 3");
    Press(Qt::Key_Up);
    EXPECT_EQ(current(), "Zel Gain 3");
}

TEST_F(EffectMenuTest, ReturnWithNothingChosenPicksNothing) {
    Open();
    Press(Qt::Key_Return);
    EXPECT_TRUE(GetMenu()->isVisible());
    EXPECT_TRUE(GetChain().empty());
}

TEST_F(EffectMenuTest, EscapeClosesWithoutAdding) {
    Open();
    Type("gain");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(GetMenu()->isVisible());
    EXPECT_TRUE(GetChain().empty());
}

TEST_F(EffectMenuTest, AClickAdds) {
    Open();
    Type("gain 3");
    QTreeWidget* const tree = Find<QTreeWidget>("EffectTree");
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(tree->currentItem()).center());
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain 3"}));
}

TEST_F(EffectMenuTest, AClickThatActivatesAsWellAddsOnlyOnce) {
    Open();
    Type("gain 3");
    QTreeWidget* const tree = Find<QTreeWidget>("EffectTree");
    // As styles do it whose items open at the first click.
    Q_EMIT tree->itemClicked(tree->currentItem(), 0);
    Q_EMIT tree->itemActivated(tree->currentItem(), 0);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain 3"}));
}

TEST_F(EffectMenuTest, TheFieldThatHasTheFocusSaysWhatIsChosen) {
    Open();
    EXPECT_EQ(zelui::qt::GetAccessibleDescription(*GetSearch()), "");
    Press(Qt::Key_Down);
    EXPECT_EQ(zelui::qt::GetAccessibleDescription(*GetSearch()), "Zel Gain 3, Zel Test Plug-ins, VST3");
    Type("no such effect");
    EXPECT_EQ(zelui::qt::GetAccessibleDescription(*GetSearch()), "");
}

TEST_F(EffectMenuTest, SaysWhenNothingMatchesAndForgetsTheSearch) {
    Open();
    Type("no such effect");
    EXPECT_TRUE(GetShown().isEmpty());
    EXPECT_EQ(Find<QLabel>("NoEffects")->text(), "No effect matches.");
    Press(Qt::Key_Escape);
    Open();
    EXPECT_EQ(GetShown().size(), 3);
    EXPECT_FALSE(Find("NoEffects")->isVisible());
}

TEST_F(EffectMenuTest, AnEmptyCatalogueOffersAScan) {
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) (*info)->SetEnabled(false);
    Open();
    EXPECT_TRUE(Find("NoEffects")->isVisible());
    EXPECT_TRUE(Find("ScanButton")->isVisible());
}

TEST_F(EffectMenuTest, WhatIsPickedGoesBehindTheChosenEffect) {
    AddEffect("Zel Gain");
    AddEffect("Zel Gain 3");
    Find<QTreeWidget>("Chain")->setCurrentItem(Find<QTreeWidget>("Chain")->topLevelItem(0));
    Open();
    Type("side");
    Press(Qt::Key_Return);
    EXPECT_EQ(GetChain(), std::vector<std::string>({"Zel Gain", "Zel Side Chain", "Zel Gain 3"}));
    EXPECT_EQ(Find<QTreeWidget>("Chain")->currentItem()->text(0), "Zel Side Chain");
}

}  // namespace zeltests
