#include "DroppedFile.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace tessaly {

std::string GetDroppedFile(const QDropEvent& event) {
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.size() == 1 && urls.front().isLocalFile() ? urls.front().toLocalFile().toStdString() : std::string();
}

}  // namespace tessaly
