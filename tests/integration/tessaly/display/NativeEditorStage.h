#pragma once

#include <vector>

#include <QApplication>
#include <QTest>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "../WindowStage.h"
#include "ChainView.h"

namespace zeltests {

/// The window with a plug-in's own editor, which takes a display.
class NativeEditorStage : public WindowStage {
protected:
    ~NativeEditorStage() override {
        // What an effect that was found by its path has left for the views.
        for (const zelcore::ustring& id : mIds)
            zelaudiofilterhost::AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(id);
        zelaudiofilterhost::PluginModuleInfoManager::GetInstance().ResetToDefaultFolders();
    }

    static zelaudiofilterhost::PluginLocator GetPlugin() {
        return {zelaudiofilterhost::kTechnologyVST,
                zelcore::utility::UTF8to16(ZEL_TESTPLUGINS_DIR "/vst/good/zel_editor" ZEL_MODULE)};
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

}  // namespace zeltests
