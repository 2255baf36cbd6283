#include "Fonts.h"

#include <algorithm>
#include <cmath>
#include <QApplication>

#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>

#include "PlainText.h"

namespace zelui {

namespace {

// Longer than the family names of any system.
const std::size_t kLongestName = 200;

}  // namespace

QFont MakeFont(const zelcore::ustring& name, int style, float size) {
    QFont font = QApplication::font();
    // Not the constructor: it takes a comma for the end of a name.
    if (!name.empty() && name.size() <= kLongestName) font.setFamilies({ToOneLine(qt::ToQString(name), kLongestName)});
    font.setBold((style & drawbot::SupplierInterface::kFontBold) != 0);
    font.setItalic((style & drawbot::SupplierInterface::kFontItalic) != 0);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    return font;
}

}  // namespace zelui
