#include <limits>

#include <gtest/gtest.h>
#include <zelcore/Geometry.h>

using namespace zelcore::geom;

TEST(GeometryTest, NewRectangleIsEmptyAtTheOrigin) {
    EXPECT_EQ(Rect(), (Rect{0, 0, 0, 0}));
    EXPECT_TRUE(Rect().IsEmpty());
    EXPECT_EQ(Point(), (Point{0, 0}));
}

TEST(GeometryTest, RectangleWithoutAreaIsEmpty) {
    EXPECT_TRUE((Rect{1, 2, 0, 5}).IsEmpty());
    EXPECT_TRUE((Rect{1, 2, 5, 0}).IsEmpty());
    EXPECT_TRUE((Rect{1, 2, -3, 5}).IsEmpty());
    EXPECT_FALSE((Rect{1, 2, 1, 1}).IsEmpty());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE((RectF{0, 0, nan, 1}).IsEmpty());
}

TEST(GeometryTest, RightAndBottomEdgesLieOutside) {
    const Rect rect{10, 20, 30, 40};
    EXPECT_EQ(rect.Right(), 40);
    EXPECT_EQ(rect.Bottom(), 60);
    EXPECT_TRUE(rect.Contains({10, 20}));
    EXPECT_TRUE(rect.Contains({39, 59}));
    EXPECT_FALSE(rect.Contains({40, 30}));
    EXPECT_FALSE(rect.Contains({20, 60}));
    EXPECT_FALSE(rect.Contains({9, 30}));
    EXPECT_FALSE(rect.Contains({20, 19}));
}
