#pragma once

#include <QString>
#include <QStringView>

namespace zelui {

/// What a field for one line can hold of the beginning of `text`: at most `limit` code units, a blank for each line
/// end, tab or other control character, no half of a surrogate pair. Looks at no more of the text than it takes.
QString ToEditableText(QStringView text, qsizetype limit);

}  // namespace zelui
