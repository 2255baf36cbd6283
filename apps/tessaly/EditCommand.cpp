#include "EditCommand.h"

#include <iostream>
#include <QApplication>
#include <QPixmap>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelmediatypes/AudioChannelLayout.h>
#include <zelui/Application.h>

#include "EditorWindow.h"
#include "PluginFinder.h"
#include "SideChainBus.h"
#include "WindowTheme.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;

namespace {

boost::intrusive_ptr<AudioFilter> LoadFilter(const CommandLine& line) {
    const boost::intrusive_ptr<AudioFilter> filter = PluginFinder::Load(line.plugin, line.component);
    if (!line.channelMap && line.track.empty() && line.sideChain.empty()) return filter;
    const zelmediatypes::AudioChannelLayout track =
        line.track.empty() ? zelmediatypes::MakeChannelLayoutForCount(2) : line.track;
    filter->SetTargetFormat(track, SideChainBus::Make(line.sideChain));
    return filter;
}

}  // namespace

EditCommand::EditCommand(const CommandLine& line) : mLine(line) {}

int EditCommand::Run(zelui::Application& application) {
    if (mLine.screenshot.empty() && !zelui::Application::HasDisplay()) {
        std::cerr << "tessaly: there is no display to show an editor on\n";
        return kExitFailed;
    }
    WindowTheme::Choose(mLine.theme);
    EditorWindow window(LoadFilter(mLine));
    if (mLine.channelMap)
        window.OpenChannelMap();
    else
        window.Open(mLine.generic);
    if (!mLine.screenshot.empty()) return WriteScreenshot(window);
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, [&application] { application.Quit(kExitDone); });
    return application.Run();
}

int EditCommand::WriteScreenshot(EditorWindow& window) const {
    if (window.TakePicture().save(QString::fromStdString(mLine.screenshot), "PNG")) return kExitDone;
    std::cerr << "tessaly: the picture could not be written to '" << mLine.screenshot << "'\n";
    return kExitFailed;
}

}  // namespace tessaly
