#include "LocalText.h"

namespace tessaly {

QString ErrorText(const std::exception& error) { return QString::fromUtf8(error.what()); }

QString MenuText(const QString& text) { return QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")); }

QString TitleText(const QString& text) {
    return QString(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace tessaly
