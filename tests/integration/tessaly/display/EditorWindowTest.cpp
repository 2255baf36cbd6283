#include "EditorWindow.h"

#include <functional>
#include <memory>

#include <gtest/gtest.h>
#include <QApplication>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelcore/Utf.h>

#include "EffectWindows.h"
#include "Session.h"

namespace zeltests {

using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::AudioFilterDescriptorManager;

/// Editors of plug-ins, which take a display, and something that happens while they open.
class EditorWindowTest : public testing::Test {
protected:
    EditorWindowTest() {
        const zelaudiofilterhost::PluginLocator plugin(
            zelaudiofilterhost::kTechnologyVST,
            zelcore::utility::UTF8to16(ZEL_TESTPLUGINS_DIR "/vst/good/zel_editor" ZEL_MODULE));
        // A plug-in that nobody knows has no editor of its own.
        mPlugin = AudioFilterDescriptor::ReadModule(plugin).at(0);
        AudioFilterDescriptorManager::GetInstance().AddDescriptor(mPlugin);
        mSession.Insert(0, *mPlugin);
    }
    ~EditorWindowTest() override {
        AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(mPlugin->GetComponent().componentId);
    }
    tessaly::EditorWindow* GetOpen() { return mWindows.Find(mEffect, tessaly::kOwnEditor); }
    /// Opens the editor, and does `meanwhile` in the turn of the main loop that this takes.
    bool OpenAndDo(const std::function<void()>& meanwhile) {
        mEffect = mSession.GetEffects()[0];
        const auto done = std::make_shared<bool>(false);
        QMetaObject::invokeMethod(
            qApp,
            [meanwhile, done] {
                meanwhile();
                // What is to be deleted is not deleted later than it can be.
                QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                *done = true;
            },
            Qt::QueuedConnection);
        mWindows.Show(mEffect, tessaly::kOwnEditor);
        return *done;
    }

    AudioFilterDescriptorManager::DescriptorPtr mPlugin;
    tessaly::Session mSession;
    tessaly::EffectWindows mWindows{mSession, nullptr};
    tessaly::ChainEffectPtr mEffect;
};

TEST_F(EditorWindowTest, OpensAndCanBeClosed) {
    ASSERT_TRUE(OpenAndDo([] {}));
    ASSERT_NE(GetOpen(), nullptr);
    EXPECT_TRUE(GetOpen()->isVisible());
    mWindows.CloseAll();
    EXPECT_EQ(GetOpen(), nullptr);
}

TEST_F(EditorWindowTest, AnEffectThatGoesWhileItsEditorOpensTakesItAlong) {
    ASSERT_TRUE(OpenAndDo([this] { mSession.Remove(0); }));
    EXPECT_EQ(GetOpen(), nullptr);
}

TEST_F(EditorWindowTest, OneThatIsClosedWhileItOpensStaysClosed) {
    ASSERT_TRUE(OpenAndDo([this] { mWindows.CloseAll(); }));
    EXPECT_EQ(GetOpen(), nullptr);
}

TEST_F(EditorWindowTest, ASessionThatGoesWhileAnEditorOpensTakesItAlong) {
    ASSERT_TRUE(OpenAndDo([this] { mSession.Clear(); }));
    EXPECT_EQ(GetOpen(), nullptr);
}

}  // namespace zeltests
