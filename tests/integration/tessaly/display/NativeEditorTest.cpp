#include <gmock/gmock.h>
#include <QApplication>
#include <QTest>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "../ScreenReader.h"
#include "../WindowStage.h"
#include "ChainView.h"

namespace zeltests {

using testing::IsEmpty;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhost::PluginModuleInfoManager;

/// The window with a plug-in's own editor, which takes a display.
class NativeEditorTest : public WindowStage {
protected:
    ~NativeEditorTest() override {
        // What an effect that was found by its path has left for the views.
        for (const zelcore::ustring& id : mIds) AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(id);
        PluginModuleInfoManager::GetInstance().ResetToDefaultFolders();
    }

    static zelaudiofilterhost::PluginLocator GetPlugin() {
        return {zelaudiofilterhost::kTechnologyVST,
                zelcore::utility::UTF8to16(ZEL_TESTPLUGINS_DIR "/vst/good/zel_editor.so")};
    }
    tessaly::EditorWindow* Find() {
        return mWindow->GetEffectWindows().Find(mWindow->GetSession().GetEffects()[0], tessaly::kOwnEditor);
    }
    static void Activate(QWidget& window) {
        window.activateWindow();
        EXPECT_TRUE(WhenTrue([&window] { return QApplication::activeWindow() == &window; }));
    }
    tessaly::EditorWindow* Open() {
        mWindow->GetChainView().SetCurrentIndex(0);
        Activate(*mWindow);
        QTest::keyClick(mWindow.get(), Qt::Key_1, Qt::ControlModifier);
        return Find();
    }

    std::vector<zelcore::ustring> mIds;
};

TEST_F(NativeEditorTest, CanBeHeardReachedAndClosedWithoutAMouse) {
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor.so");
    AddEffect("Zel Editor");
    tessaly::EditorWindow* const window = Open();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->IsOwnEditorOpen());
    Activate(*window);
    EXPECT_THAT(ScreenReader::FindFaults(*window), IsEmpty());
    EXPECT_THAT(ScreenReader::FindUnreachable(*window), IsEmpty());
    QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(NativeEditorTest, OpensForAPluginOfTheFoldersThatOnlyTheSessionKnows) {
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor.so");
    AddEffect("Zel Editor");
    mIds.push_back(mWindow->GetSession().GetEffects()[0]->GetFilter()->GetComponentID());
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("a.tessaly")));
    ASSERT_TRUE(mWindow->GetFiles().New());
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    catalogue.RemovePluginLocators({GetPlugin()});
    ASSERT_FALSE(AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(mIds[0]));
    catalogue.GetPluginTechnology(zelaudiofilterhost::kTechnologyVST)
        ->AddPluginDirectories({zelcore::utility::UTF8to16(ZEL_TESTPLUGINS_DIR)});
    ASSERT_TRUE(mWindow->GetFiles().OpenSession(mFolder.Path("a.tessaly")));
    tessaly::EditorWindow* const window = Open();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->IsOwnEditorOpen());
}

}  // namespace zeltests
