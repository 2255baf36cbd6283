#pragma once

#include <exception>
#include <QString>
#include <string>
#include <string_view>

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelui/QtBridge.h>

namespace tessaly {

/// A localised text ("$$$/key=Default") as Qt wants it, its placeholders "@0", "@1", … filled with the values, which
/// are QString. Main thread.
template <typename... Values>
QString LocalText(std::string_view keyAndDefault, const Values&... values) {
    return zelui::qt::ToQString(zelcore::utility::FillPlaceholders(zelcore::config::Localize(keyAndDefault),
                                                                   {zelui::qt::FromQString(values)...}));
}

/// An exception's text, which is UTF-8; of one that has its text in the user's language that text.
QString ErrorText(const std::exception& error);

/// The name of a file, whose path is UTF-8, without its folders.
QString FileNameText(const std::string& path);

/// Text of others (a plug-in's name, a path) for menus and for window titles, where Qt gives "&" and "[*]" a meaning.
QString MenuText(const QString& text);
QString TitleText(const QString& text);
/// The same for tooltips, which Qt shows with markup where a text looks as if it had some.
QString ToolTipText(const QString& text);

}  // namespace tessaly
