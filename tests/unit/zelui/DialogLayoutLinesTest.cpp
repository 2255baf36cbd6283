#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "../../../frameworks/zelui/src/DialogLayoutLines.h"

namespace zeltests {

using zelui::DialogLayoutLines;

namespace {

/// Lines and left edges.
std::vector<std::pair<std::size_t, float>> Break(const std::vector<DialogLayoutLines::Child>& children, float limit) {
    const DialogLayoutLines lines(children, limit);
    std::vector<std::pair<std::size_t, float>> places;
    for (std::size_t i = 0; i < children.size(); ++i) places.emplace_back(lines.GetLine(i), lines.GetLeft(i));
    return places;
}

typedef std::vector<std::pair<std::size_t, float>> Places;

}  // namespace

TEST(DialogLayoutLinesTest, WhatFitsIsOneLine) {
    EXPECT_EQ(Break({{4, 80}, {94, 80}, {184, 80}}, 264), (Places{{0, 4}, {0, 94}, {0, 184}}));
    EXPECT_EQ(DialogLayoutLines({{4, 80}, {94, 80}}, 174).GetLineCount(), 1u);
}

TEST(DialogLayoutLinesTest, WhatReachesBeyondTheLimitBeginsAnotherLineAndTheGapsStay) {
    EXPECT_EQ(Break({{4, 80}, {94, 80}, {184, 80}, {280, 10}}, 263), (Places{{0, 4}, {0, 94}, {1, 4}, {1, 100}}));
    EXPECT_EQ(DialogLayoutLines({{4, 80}, {94, 80}, {184, 80}}, 100).GetLineCount(), 3u);
}

TEST(DialogLayoutLinesTest, TheOrderOfTheChildrenDoesNotMatter) {
    EXPECT_EQ(Break({{184, 80}, {4, 80}, {94, 80}}, 200), (Places{{1, 4}, {0, 4}, {0, 94}}));
}

TEST(DialogLayoutLinesTest, WhatIsWiderThanALineHasOneForItself) {
    EXPECT_EQ(Break({{4, 300}, {310, 50}, {370, 300}, {680, 20}}, 100), (Places{{0, 4}, {1, 4}, {2, 4}, {3, 4}}));
}

TEST(DialogLayoutLinesTest, WhatIsInNoLinesStaysAndPushesNothingAway) {
    EXPECT_EQ(Break({{4, 80}, {94, 80, false}, {184, 80}}, 200), (Places{{0, 4}, {0, 94}, {1, 4}}));
}

TEST(DialogLayoutLinesTest, WithoutChildrenThereIsOneLine) { EXPECT_EQ(DialogLayoutLines({}, 0).GetLineCount(), 1u); }

}  // namespace zeltests
