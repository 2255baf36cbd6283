#include <map>

#include <gtest/gtest.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_Container.h>

#include "../../../frameworks/zelui/src/DialogLayoutGrowth.h"
#include "ManagerStage.h"

namespace zeltests {

using zelcore::config::Localizer;
using zelcore::geom::Rect;
using zelcore::geom::RectF;
using zelui::ui::UI_Container;
using zelui::ui::UI_Node;

namespace {

const char kGerman[] = R"({
    "/PluginManager/Dialog/VSTPluginFolders": "VST-Zusatzmodulordner:",
    "/PluginManager/Dialog/Add": "Hinzufügen …",
    "/PluginManager/Dialog/Remove": "Ausgewählte entfernen",
    "/PluginManager/Dialog/Default": "Auf Standard zurücksetzen",
    "/PluginManager/Dialog/AvailablePlugins": "Verfügbare Zusatzmodule:",
    "/PluginManager/Dialog/Scan": "Nach Zusatzmodulen suchen",
    "/PluginManager/Dialog/RescanExisting": "Vorhandene erneut überprüfen",
    "/PluginManager/Dialog/EnableAll": "Alle aktivieren",
    "/PluginManager/Dialog/DisableAll": "Alle deaktivieren",
    "/PluginManager/Dialog/SeparateProcess": "In eigenem Prozess",
    "/PluginManager/Dialog/Filter": "Suchbegriff:",
    "/PluginManager/Dialog/OK": "Übernehmen",
    "/PluginManager/Dialog/Cancel": "Verwerfen",
    "/AudioPluginManager/Reload": "Erneut laden",
    "/AudioPluginManager/Failed": "Funktioniert nicht"})";

const char kFrench[] = R"({
    "/PluginManager/Dialog/VSTPluginFolders": "Dossiers des modules externes VST :",
    "/PluginManager/Dialog/Add": "Ajouter un dossier…",
    "/PluginManager/Dialog/Remove": "Supprimer la sélection",
    "/PluginManager/Dialog/Default": "Valeurs par défaut",
    "/PluginManager/Dialog/AvailablePlugins": "Modules externes disponibles :",
    "/PluginManager/Dialog/Scan": "Rechercher des modules externes",
    "/PluginManager/Dialog/RescanExisting": "Analyser de nouveau les modules existants",
    "/PluginManager/Dialog/EnableAll": "Tout activer",
    "/PluginManager/Dialog/DisableAll": "Tout désactiver",
    "/PluginManager/Dialog/SeparateProcess": "Processus distinct",
    "/PluginManager/Dialog/Filter": "Filtrer :",
    "/PluginManager/Dialog/OK": "OK",
    "/PluginManager/Dialog/Cancel": "Annuler"})";

/// How the dialog is laid out, in windows of different sizes.
class PluginManagerDialogLayoutTest : public ManagerStage {
protected:
    ~PluginManagerDialogLayoutTest() override { Localizer::GetInstance().Clear(); }

    void SetLanguage(const char* dictionary) {
        if (dictionary == nullptr) return;
        WriteFile(mFolder.Path("texts.json"), dictionary);
        Localizer::GetInstance().LoadDictionary(
            zelcore::filesupport::File(zelcore::utility::UTF8to16(mFolder.Path("texts.json"))));
    }
    void Resize(int width, int height) {
        GetWindow().resize(width, height);
        ProcessUntil([&] { return GetRoot().UI_GetLocalRectF() == RectF{0, 0, float(width), float(height)}; });
    }
    UI_Node& GetRoot() const {
        UI_Node* node = &Find("PluginList");
        while (node->UI_GetParentNode() != nullptr) node = node->UI_GetParentNode();
        return *node;
    }
    /// Those of the dialog, not those that a control has inside, with their frames in the window.
    static void Collect(const UI_Node& node, float left, float top, std::map<const UI_Node*, RectF>& frames) {
        if (!node.UI_IsShown()) return;
        RectF frame = node.UI_GetLocalRectF();
        frame.left += left;
        frame.top += top;
        frames[&node] = frame;
        const bool isControl = dynamic_cast<const zelui::controls::UI_ControlView*>(&node) != nullptr;
        const UI_Container* const container = isControl ? nullptr : node.UI_AsContainer();
        for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i)
            Collect(*container->ChildAt(i), frame.left, frame.top, frames);
    }
    std::map<const UI_Node*, RectF> GetFrames() const {
        std::map<const UI_Node*, RectF> frames;
        Collect(GetRoot(), 0, 0, frames);
        return frames;
    }
    void ExpectNothingCutOrOverlapping() const;

    void CheckAtFourHundred(const char* dictionary) {
        SetLanguage(dictionary);
        AddPlugin("/p/delay.so", "Delay");
        Ban("/p/crashes.so");
        SetFolders({"/one/folder", "/another/folder"});
        SaveCatalogue();
        RunDialog([this] {
            const QSize size = GetWindow().size();
            // Once wider, so that what is hidden in narrow windows is as the rule for it says.
            Resize(size.width() + 60, size.height());
            ExpectNothingCutOrOverlapping();
            const auto before = GetFrames();
            Resize(400, 400);
            ExpectNothingCutOrOverlapping();
            EXPECT_FALSE(Find("FindTextEdit").UI_IsShown());
            EXPECT_GT(Find("PluginList").UI_GetLocalRectF().height, 60);
            for (int width = 400; width < size.width() + 60; width += 37) {
                SCOPED_TRACE(width);
                Resize(width, 450);
                ExpectNothingCutOrOverlapping();
            }
            Resize(size.width() + 60, size.height());
            EXPECT_EQ(GetFrames(), before);
        });
    }
};

bool Overlap(const RectF& a, const RectF& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

/// Boxes and the lists below them share a line.
RectF WithoutEdge(const RectF& frame) { return {frame.left, frame.top + 1, frame.width, frame.height - 2}; }

void PluginManagerDialogLayoutTest::ExpectNothingCutOrOverlapping() const {
    const std::map<const UI_Node*, RectF> frames = GetFrames();
    int controls = 0;
    for (const auto& [node, frame] : frames) {
        SCOPED_TRACE(std::string(node->UI_GetID().c_str()));
        const auto parent = frames.find(node->UI_GetParentNode());
        if (parent != frames.end()) {
            EXPECT_GE(frame.left, parent->second.left);
            EXPECT_GE(frame.top, parent->second.top);
            EXPECT_LE(frame.Right(), parent->second.Right());
            EXPECT_LE(frame.Bottom(), parent->second.Bottom());
        }
        if (dynamic_cast<const zelui::controls::UI_ControlView*>(node) == nullptr) continue;
        ++controls;
        EXPECT_GE(frame.width, zelui::GetTextNeed(*node).x);
        for (const auto& [other, otherFrame] : frames) {
            if (other == node || dynamic_cast<const zelui::controls::UI_ControlView*>(other) == nullptr) continue;
            EXPECT_FALSE(Overlap(WithoutEdge(frame), WithoutEdge(otherFrame))) << other->UI_GetID().c_str();
        }
    }
    EXPECT_GE(controls, 13);
}

}  // namespace

TEST_F(PluginManagerDialogLayoutTest, AtFourHundredByFourHundredNothingIsCutAndItAllComesBack) {
    CheckAtFourHundred(nullptr);
}

TEST_F(PluginManagerDialogLayoutTest, NeitherIsItInGerman) { CheckAtFourHundred(kGerman); }

TEST_F(PluginManagerDialogLayoutTest, NeitherIsItInFrench) { CheckAtFourHundred(kFrench); }

TEST_F(PluginManagerDialogLayoutTest, AtTheArchivedSizeTheRowsAreOneLineEach) {
    SaveCatalogue();
    RunDialog([this] {
        EXPECT_EQ(Find("AddDirectoryButton").UI_GetParentNode()->UI_GetLocalRectF().height, 19);
        EXPECT_EQ(Find("UpdateButton").UI_GetParentNode()->UI_GetLocalRectF().height, 19);
        EXPECT_EQ(Find("PluginList").UI_GetLocalRectF().top, 184);
        EXPECT_EQ(Find("DirectoryList").UI_GetLocalRectF().top, 58);
    });
}

TEST_F(PluginManagerDialogLayoutTest, WithTheSeparateProcessBoxNothingIsCutEither) {
    zelcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    SaveCatalogue();
    RunDialog([this] {
        EXPECT_TRUE(Find("SeparateProcess").UI_IsShown());
        Resize(400, 400);
        ExpectNothingCutOrOverlapping();
    });
}

TEST_F(PluginManagerDialogLayoutTest, ARememberedSizeOfFourHundredIsLaidOutAtOnce) {
    SaveCatalogue();
    mSettings.dialogRect = {0, 0, 400, 400};
    RunDialog([this] {
        EXPECT_EQ(GetWindow().size(), QSize(400, 400));
        ExpectNothingCutOrOverlapping();
    });
}

// Where the window opens

TEST_F(PluginManagerDialogLayoutTest, ARectangleThatLiesOffTheScreenIsTakenAsItStands) {
    SaveCatalogue();
    for (const Rect rect : {Rect{-5000, -4000, 800, 600}, Rect{20000, 30000, 500, 450}}) {
        mSettings.dialogRect = rect;
        RunDialog([&] {
            EXPECT_EQ(GetWindow().frameGeometry(),
                      QRect(int(rect.left), int(rect.top), int(rect.width), int(rect.height)));
        });
        EXPECT_EQ(mSettings.dialogRect, rect);
    }
}

TEST_F(PluginManagerDialogLayoutTest, ARectangleWithoutWidthOrHeightIsNotTaken) {
    SaveCatalogue();
    QSize archived;
    RunDialog([&] { archived = GetWindow().size(); });
    EXPECT_GE(archived.width(), 737);
    EXPECT_EQ(archived.height(), 470);
    for (const Rect rect : {Rect{10, 10, 0, 500}, Rect{10, 10, 500, 0}, Rect{10, 10, -1, 500}, Rect{10, 10, 500, -1},
                            Rect{10, 10, -500, -500}}) {
        mSettings.dialogRect = rect;
        RunDialog([&] { EXPECT_EQ(GetWindow().size(), archived); });
        EXPECT_GE(mSettings.dialogRect.width, archived.width());
    }
}

TEST_F(PluginManagerDialogLayoutTest, ARectangleOfOneByOneIsTakenAsFarAsTheWindowGoes) {
    SaveCatalogue();
    mSettings.dialogRect = {10, 20, 1, 1};
    RunDialog([this] {
        EXPECT_EQ(GetWindow().pos(), QPoint(10, 20));
        EXPECT_EQ(GetWindow().size(), QSize(400, 400));
    });
}

}  // namespace zeltests
