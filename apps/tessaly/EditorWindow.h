#pragma once

#include <QWidget>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>

namespace tessaly {

/// A window with an editor of one filter. Main thread.
class EditorWindow final : public QWidget {
public:
    explicit EditorWindow(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter);

private:
    void AddEditor(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter);
    void AddNote(const QString& text);
};

}  // namespace tessaly
