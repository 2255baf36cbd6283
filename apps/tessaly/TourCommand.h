#pragma once

#include <functional>
#include <QDir>
#include <string>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include "CommandLine.h"
#include "EffectRecord.h"

class QPixmap;
class QWidget;

namespace tessaly {

class MainWindow;

/// `tessaly tour`: does with the real windows and this machine's plug-ins what a person would do first, and keeps
/// pictures of it. Main thread.
class TourCommand {
public:
    explicit TourCommand(const CommandLine& line);

    /// Returns the program's exit code.
    int Run();

private:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor> DescriptorPtr;

    void Scan();
    void ShowManager();
    void OpenSounds(MainWindow& window);
    void AddEffects(MainWindow& window);
    void ShowEffectMenu(MainWindow& window);
    void ShowEditors(MainWindow& window);
    void ShowEditor(MainWindow& window, int index, EditorKind kind, const QString& name);
    void Play(MainWindow& window);
    void RenderAndSave(MainWindow& window);
    void ShowInTheDark(MainWindow& window);

    std::string GetPath(const QString& fileName) const;
    void Keep(const QPixmap& picture, const QString& name);
    /// Runs `modal`, which opens a dialog, and pictures the dialog as soon as `isReady` says so of it.
    void KeepModal(const std::function<void()>& modal, const std::function<bool(const QWidget&)>& isReady,
                   const QString& name);
    void Say(const std::string& text) const;

    CommandLine mLine;
    QDir mFolder;
    int mPictures;
};

}  // namespace tessaly
