#include "EditCommand.h"

#include <iostream>
#include <QApplication>
#include <QPixmap>
#include <stdexcept>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelui/Application.h>
#include <zelui/Theme.h>

#include "EditorWindow.h"
#include "PluginFinder.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelui::ui::Theme;

namespace {

boost::intrusive_ptr<AudioFilter> LoadFilter(const CommandLine& line) {
    const PluginFinder::DescriptorPtr descriptor = PluginFinder::Find(line.plugin, line.component);
    // One that was given by its path need not be in the catalogue, and has the same right to a view.
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(descriptor);
    try {
        return descriptor->CreateFilter();
    } catch (const zelaudiofilterhost::PluginLoadError& error) {
        throw std::runtime_error(TerminalText::FromText(descriptor->GetComponent().name) + " " + error.what());
    }
}

}  // namespace

EditCommand::EditCommand(const CommandLine& line) : mLine(line) {}

int EditCommand::Run(zelui::Application& application) {
    if (mLine.screenshot.empty() && !zelui::Application::HasDisplay()) {
        std::cerr << "tessaly: there is no display to show an editor on\n";
        return kExitFailed;
    }
    ChooseTheme();
    EditorWindow window(LoadFilter(mLine));
    window.Open(mLine.generic);
    if (!mLine.screenshot.empty()) return WriteScreenshot(window);
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, [&application] { application.Quit(kExitDone); });
    return application.Run();
}

void EditCommand::ChooseTheme() const {
    switch (mLine.theme) {
        case CommandLine::kLight:
            Theme::Get().Choose(Theme::kLight);
            break;
        case CommandLine::kDark:
            Theme::Get().Choose(Theme::kDark);
            break;
        case CommandLine::kSystem:
            break;
    }
}

int EditCommand::WriteScreenshot(EditorWindow& window) const {
    if (window.TakePicture().save(QString::fromStdString(mLine.screenshot), "PNG")) return kExitDone;
    std::cerr << "tessaly: the picture could not be written to '" << mLine.screenshot << "'\n";
    return kExitFailed;
}

}  // namespace tessaly
