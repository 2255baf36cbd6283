#include "TreeSort.h"

#include <algorithm>
#include <numeric>
#include <string_view>

#include <QChar>

namespace zelui {

namespace {

bool IsDigit(unsigned short unit) { return unit >= '0' && unit <= '9'; }

/// Texts in a form that is compared unit by unit: each is folded once, not with every comparison. All stand in one
/// buffer.
class SortKeys {
public:
    explicit SortKeys(const std::vector<zelcore::ustring>& texts) {
        mEnds.reserve(texts.size() + 1);
        mEnds.push_back(0);
        for (const zelcore::ustring& text : texts) {
            Append(text);
            mEnds.push_back(mUnits.size());
        }
    }

    std::u16string_view Get(std::size_t index) const {
        return std::u16string_view(mUnits).substr(mEnds[index], mEnds[index + 1] - mEnds[index]);
    }

private:
    void Append(const zelcore::ustring& text) {
        for (std::size_t i = 0; i < text.size();) i = IsDigit(text[i]) ? AppendNumber(text, i) : AppendFolded(text, i);
    }

    // A digit first, so that numbers stand among other characters where digits do; then the number's length, as of two
    // numbers the longer one is the larger.
    std::size_t AppendNumber(const zelcore::ustring& text, std::size_t begin) {
        while (begin + 1 < text.size() && text[begin] == '0' && IsDigit(text[begin + 1])) ++begin;
        std::size_t end = begin;
        while (end < text.size() && IsDigit(text[end])) ++end;
        mUnits += u'0';
        mUnits += static_cast<char16_t>(end - begin);
        for (std::size_t i = begin; i < end; ++i) mUnits += static_cast<char16_t>(text[i]);
        return end;
    }

    std::size_t AppendFolded(const zelcore::ustring& text, std::size_t at) {
        const char16_t unit = static_cast<char16_t>(text[at]);
        if (unit < 128) {
            mUnits += static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 32 : unit);
            return at + 1;
        }
        const bool isPair = at + 1 < text.size() && QChar::isHighSurrogate(unit) && QChar::isLowSurrogate(text[at + 1]);
        if (!isPair) {
            mUnits += static_cast<char16_t>(QChar::toCaseFolded(char32_t(unit)));
            return at + 1;
        }
        const char32_t folded = QChar::toCaseFolded(QChar::surrogateToUcs4(unit, static_cast<char16_t>(text[at + 1])));
        mUnits += QChar::highSurrogate(folded);
        mUnits += QChar::lowSurrogate(folded);
        return at + 2;
    }

    std::u16string mUnits;
    std::vector<std::size_t> mEnds;
};

}  // namespace

std::vector<std::size_t> GetSortedOrder(std::vector<zelcore::ustring> texts, bool ascending) {
    for (zelcore::ustring& text : texts) {
        if (text.size() > kMaximumSortLength) text.resize(kMaximumSortLength);
    }
    const SortKeys keys(texts);
    const auto isBefore = [&keys, &texts](std::size_t one, std::size_t other) {
        const int order = keys.Get(one).compare(keys.Get(other));
        return order != 0 ? order < 0 : texts[one] < texts[other];
    };
    std::vector<std::size_t> order(texts.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    if (ascending)
        std::stable_sort(order.begin(), order.end(), isBefore);
    else
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t one, std::size_t other) { return isBefore(other, one); });
    return order;
}

}  // namespace zelui
