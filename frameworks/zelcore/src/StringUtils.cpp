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

}  // namespace utility
}  // namespace zelcore
