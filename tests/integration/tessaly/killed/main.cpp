#include <functional>
#include <iostream>
#include <map>
#include <string>

#include <QApplication>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/Module.h>
#include <zelcore/Dir.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>

#include "ChainView.h"
#include "MainWindow.h"

using zelaudiofilterhost::PluginModuleInfoManager;

namespace {

/// A run that does one thing over and over until it is killed, and says on its output when it has done it.
class KilledRun {
public:
    explicit KilledRun(const std::string& folder) : mFolder(folder), mWindow(tessaly::CommandLine::kLight) {
        mWindow.GetFiles().SetUnattended(true);
        mWindow.show();
        mWindow.GetFiles().OpenSession(GetSession());
    }

    void Do(const std::string& what) {
        const std::map<std::string, void (KilledRun::*)()> works = {{"change", &KilledRun::Change},
                                                                    {"save", &KilledRun::Save},
                                                                    {"open", &KilledRun::Open},
                                                                    {"render", &KilledRun::Render},
                                                                    {"edit", &KilledRun::Edit}};
        const auto work = works.at(what);
        for (;;) {
            (this->*work)();
            QApplication::processEvents();
            std::cout << ++mCount << std::endl;
        }
    }

private:
    std::string GetSession() const { return mFolder + "/a.tessaly"; }

    void Change() { mWindow.ToggleLoop(); }

    /// The first effect's first parameter says which save it was, in thousandths.
    void Save() {
        mWindow.GetSession().GetEffects().at(0)->GetFilter()->SetParameterValue(0,
                                                                                static_cast<float>(mCount) / 1000.0f);
        mWindow.ToggleLoop();
        mWindow.Save();
    }

    void Open() { mWindow.GetFiles().OpenSession(GetSession()); }

    void Render() { mWindow.Render(mFolder + "/rendered.wav"); }

    void Edit() {
        mWindow.GetChainView().SetCurrentIndex(0);
        mWindow.OpenEditor(mCount % 2 == 0 ? tessaly::kGenericEditor : tessaly::kChannelMapEditor);
        mWindow.GetChainView().RemoveCurrent();
        QApplication::processEvents();
        mWindow.GetSession().GetUndoStack().undo();
    }

    const std::string mFolder;
    tessaly::MainWindow mWindow;
    int mCount = 0;
};

}  // namespace

/// killed_run PREFERENCES FOLDER WHAT
int main(int argc, char** argv) {
    const zelui::Application application(argc, argv);
    if (argc != 4) return 2;
    zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir(zelcore::utility::UTF8to16(argv[1])));
    zelaudiofilterhostui::Initialize();
    PluginModuleInfoManager::GetInstance()
        .GetPluginTechnology(zelaudiofilterhost::kTechnologyVST)
        ->AddPluginDirectories({zelcore::utility::UTF8to16(ZEL_TESTPLUGINS_DIR)});
    KilledRun(argv[2]).Do(argv[3]);
}
