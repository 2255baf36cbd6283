#include <zelcore/StringUtils.h>

namespace zelcore {
namespace utility {

int ReplaceInString(ustring& text, const ustring& token, const ustring& replacement) {
    if (token.empty()) return 0;
    std::size_t found = text.find(token);
    if (found == ustring::npos) return 0;

    // Building the result apart keeps many replacements linear and lets the arguments be the text itself.
    ustring result;
    std::size_t done = 0;
    int count = 0;
    for (; found != ustring::npos; found = text.find(token, done)) {
        result.append(text, done, found - done);
        result.append(replacement);
        done = found + token.size();
        ++count;
    }
    result.append(text, done, ustring::npos);
    text.swap(result);
    return count;
}

ustring FillPlaceholders(const ustring& text, std::initializer_list<ustring> values) {
    ustring filled;
    std::size_t done = 0;
    while (done < text.size()) {
        const std::size_t next = done + 1;
        const std::size_t place = text[done] == '@' && next < text.size() && text[next] >= '0'
                                      ? std::size_t(text[next] - '0')
                                      : ustring::npos;
        if (place <= 9 && place < values.size()) {
            filled.append(values.begin()[place]);
            done += 2;
        } else {
            filled.push_back(text[done++]);
        }
    }
    return filled;
}

}  // namespace utility
}  // namespace zelcore
