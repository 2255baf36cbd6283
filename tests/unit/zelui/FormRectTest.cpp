#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <zelui/FormRect.h>

namespace zeltests {
namespace {

/// Writes down how it is made.
class WrittenPath final : public zelui::drawbot::Path {
public:
    std::string written;

    void MoveTo(const zelcore::geom::PointF& point) override { Write("move", point); }
    void LineTo(const zelcore::geom::PointF& point) override { Write("line", point); }
    void Close() override { written += "close"; }
    void AddRect(const zelcore::geom::RectF&) override { written += "rect"; }

private:
    void Write(const char* word, const zelcore::geom::PointF& point) {
        written += std::string(word) + " " + std::to_string(static_cast<int>(point.x)) + "," +
                   std::to_string(static_cast<int>(point.y)) + " ";
    }
};

std::string Form(const zelcore::geom::RectF& rect) {
    const boost::intrusive_ptr<WrittenPath> path(new WrittenPath);
    zelui::utils::FormRect(*path, rect);
    return path->written;
}

}  // namespace

TEST(FormRectTest, GoesClockwiseFromTheLeftTopCornerAndCloses) {
    EXPECT_EQ(Form({1, 2, 10, 20}), "move 1,2 line 11,2 line 11,22 line 1,22 close");
}

TEST(FormRectTest, WithoutAWidthItIsALine) {
    EXPECT_EQ(Form({1, 2, 0, 20}), "move 1,2 line 1,2 line 1,22 line 1,22 close");
}

TEST(FormRectTest, WithoutNumbersItAddsNothing) {
    EXPECT_EQ(Form({std::numeric_limits<float>::quiet_NaN(), 0, 1, 1}), "");
    EXPECT_EQ(Form({0, 0, std::numeric_limits<float>::infinity(), 1}), "");
}

}  // namespace zeltests
