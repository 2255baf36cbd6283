#pragma once

#include <cstddef>
#include <vector>

#include <zelui/Export.h>

#include "DialogLayoutItem.h"

namespace zelui {

/// The children of a row, on as many lines as it takes for none to reach beyond a limit, in the order in which they
/// stand beside each other. Each line begins where the first one does, and the gaps between neighbours stay. A child
/// that is wider than a line has one for itself.
class ZELUI_API DialogLayoutLines {
public:
    /// Where a child stands beside the others, and whether it goes on to another line when there is no room for it.
    struct Child {
        float left = 0.0f;
        float width = 0.0f;
        bool isInLines = true;
    };

    DialogLayoutLines(const std::vector<Child>& children, float limit);

    /// Of those that are in no lines: the first line, and where they were.
    std::size_t GetLine(std::size_t child) const { return mPlaces[child].line; }
    float GetLeft(std::size_t child) const { return mPlaces[child].left; }
    std::size_t GetLineCount() const { return mLineCount; }

private:
    struct LinePlace {
        std::size_t line;
        float left;
    };

    std::vector<LinePlace> mPlaces;
    std::size_t mLineCount = 1;
};

}  // namespace zelui
