#include <gtest/gtest.h>
#include <QLabel>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include "NativeEditorStage.h"

namespace zeltests {

using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhost::PluginModuleInfoManager;

typedef NativeEditorStage NativeEditorTest;

TEST_F(NativeEditorTest, OpensAndClosesByKeys) {
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor" ZEL_MODULE);
    AddEffect("Zel Editor");
    tessaly::EditorWindow* const window = Open();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->IsOwnEditorOpen());
    Activate(*window);
    QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(NativeEditorTest, WhyItDidNotOpenCanBeReadToTheEnd) {
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor_fails" ZEL_MODULE);
    AddEffect("Zel Editor Fails");
    tessaly::EditorWindow* const window = Open();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->IsOwnEditorOpen());
    const QLabel* const note = window->findChild<QLabel*>(QStringLiteral("EditorNote"));
    ASSERT_NE(note, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    EXPECT_GE(note->height(), note->heightForWidth(note->width()));
}

TEST_F(NativeEditorTest, OpensForAPluginOfTheFoldersThatOnlyTheSessionKnows) {
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor" ZEL_MODULE);
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
