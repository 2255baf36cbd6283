#include "LocalText.h"

#include <QFileInfo>
#include <QTextDocument>

#include <zelcore/FileError.h>

namespace tessaly {

QString ErrorText(const std::exception& error) {
    const auto* const ofFile = dynamic_cast<const zelcore::filesupport::FileError*>(&error);
    return ofFile != nullptr ? zelui::qt::ToQString(ofFile->GetLocalizedText()) : QString::fromUtf8(error.what());
}

QString FileNameText(const std::string& path) { return QFileInfo(QString::fromStdString(path)).fileName(); }

QString MenuText(const QString& text) { return QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")); }

QString TitleText(const QString& text) {
    return QString(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString ToolTipText(const QString& text) {
    return Qt::mightBeRichText(text) ? QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>")
                                     : text;
}

}  // namespace tessaly
