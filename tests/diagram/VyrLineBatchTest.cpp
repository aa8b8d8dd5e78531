#include <cstdint>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <wx/pen.h>

#include "diagram/VyrLineBatch.h"
#include "support/PaintScene.h"
#include "support/RecordingDC.h"

using Kind = RecordedPrimitive::Kind;

namespace {

struct Line {
    int x1, y1, x2, y2;
};

// Lines of every kind a line painter draws: verticals and horizontals of any length, the
// short steps from one pixel column to the next, single points, and lines of any slope, some
// reaching far out of the picture or longer than any learnt shape.
std::vector<Line> MixedLines(int count, std::mt19937& random) {
    std::uniform_int_distribution<int> anywhere(-40, 540);
    std::uniform_int_distribution<int> step(-2, 2);
    std::uniform_int_distribution<int> length(-120, 120);
    std::uniform_int_distribution<int> kind(0, 9);
    std::vector<Line> lines;
    for (int i = 0; i < count; ++i) {
        const int x = anywhere(random);
        const int y = anywhere(random) / 2;
        switch (kind(random)) {
            case 0:
            case 1:
                lines.push_back({x, y, x, y + length(random)});
                break;
            case 2:
                lines.push_back({x, y, x + length(random), y});
                break;
            case 3:
            case 4:
                lines.push_back({x, y, x + step(random), y + length(random)});
                break;
            case 5:
                lines.push_back({x, y, x + length(random), y + step(random)});
                break;
            case 6:
                lines.push_back({x, y, x, y});
                break;
            case 7:
                lines.push_back({x, y, anywhere(random), anywhere(random) / 2});
                break;
            case 8:
                lines.push_back({x, y, x, y + 3000 * (length(random) > 0 ? 1 : -1)});
                break;
            default:
                lines.push_back({x, y, x + 1, -(1 << 29)});
                break;
        }
    }
    return lines;
}

}  // namespace

// On an image, lines are blended from their learnt shapes: without antialiasing exactly the
// pixels of drawing each line, for pen widths 1 to 4, the three caps, with and without a clip
// that cuts lines; a second picture, from shapes learnt by the first, is the same again.
TEST(VyrLineBatch, AliasedLinesOnAnImageAreThePixelsOfEachLineDrawn) {
    const wxSize size(500, 260);
    std::mt19937 random(2024);
    const std::vector<Line> lines = MixedLines(3000, random);
    const wxColour colour(200, 40, 90);
    for (const wxRect& clip : {wxRect(), wxRect(50, 20, 401, 201)}) {
        for (int width : {1, 2, 3, 4}) {
            for (wxPenCap cap : {wxCAP_ROUND, wxCAP_BUTT, wxCAP_PROJECTING}) {
                SCOPED_TRACE(testing::Message() << "clip " << clip.width << ", width " << width
                                                << ", cap " << int(cap));
                wxPen pen(colour, width, wxPENSTYLE_SOLID);
                pen.SetCap(cap);
                auto select = [&](wxDC& dc) {
                    if (clip.width > 0)
                        dc.SetClippingRegion(clip);
                    dc.SetPen(pen);
                };
                const wxImage drawn = PaintToImage(
                    size,
                    [&](wxDC& dc) {
                        select(dc);
                        for (const Line& l : lines)
                            dc.DrawLine(l.x1, l.y1, l.x2, l.y2);
                    },
                    false);
                for (int picture = 0; picture < 2; ++picture) {
                    bool stamping = false;
                    const wxImage batched = PaintToImage(
                        size,
                        [&](wxDC& dc) {
                            select(dc);
                            VyrLineBatch batch(&dc);
                            stamping = batch.IsStamping();
                            for (const Line& l : lines)
                                batch.Line(l.x1, l.y1, l.x2, l.y2);
                        },
                        false);
                    EXPECT_TRUE(stamping);
                    EXPECT_EQ(CountDifferentPixels(batched, drawn, 0), 0);
                }
                const wxImage blank = PaintToImage(
                    size, [](wxDC&) {}, false);
                EXPECT_GT(CountDifferentPixels(drawn, blank, 0), 10000);
            }
        }
    }
}

// Antialiased, a line of a one-pixel pen is its shape's cover blended over what lies below, in
// the order the lines come: the picture is the renderer's to within one unit of a channel.
// Wider pens, whose caps the renderer rasterises a little differently from one position to
// the next, are drawn line by line: the very same pixels.
TEST(VyrLineBatch, AntialiasedLinesOnAnImageAreWithinOneUnitOfEachLineDrawn) {
    const wxSize size(500, 260);
    std::mt19937 random(7);
    const std::vector<Line> lines = MixedLines(3000, random);
    for (int width : {1, 2, 3}) {
        for (wxPenCap cap : {wxCAP_ROUND, wxCAP_BUTT, wxCAP_PROJECTING}) {
            SCOPED_TRACE(testing::Message() << "width " << width << ", cap " << int(cap));
            wxPen pen(wxColour(20, 110, 230), width, wxPENSTYLE_SOLID);
            pen.SetCap(cap);
            const wxImage drawn = PaintToImage(
                size,
                [&](wxDC& dc) {
                    dc.SetPen(pen);
                    for (const Line& l : lines)
                        dc.DrawLine(l.x1, l.y1, l.x2, l.y2);
                },
                true);
            bool stamping = false;
            const wxImage batched = PaintToImage(
                size,
                [&](wxDC& dc) {
                    dc.SetPen(pen);
                    VyrLineBatch batch(&dc);
                    stamping = batch.IsStamping();
                    for (const Line& l : lines)
                        batch.Line(l.x1, l.y1, l.x2, l.y2);
                },
                true);
            EXPECT_EQ(stamping, width == 1);
            EXPECT_EQ(CountDifferentPixels(batched, drawn, width == 1 ? 1 : 0), 0);
            const wxImage blank = PaintToImage(
                size, [](wxDC&) {}, true);
            EXPECT_GT(CountDifferentPixels(batched, blank, 0), 10000);
        }
    }
}

// A context that moves thin lines onto pixel centres (as one made over a window's or a bitmap's
// DC does) gets shapes learnt with that same setting: one pixel covered wholly where a line
// without it would cover two by halves.
TEST(VyrLineBatch, LinesOfAnOffsetContextAreTheLinesThatContextDraws) {
    const wxSize size(500, 260);
    std::mt19937 random(31);
    const std::vector<Line> lines = MixedLines(2000, random);
    const wxPen pen(wxColour(185, 185, 185), 1, wxPENSTYLE_SOLID);
    for (bool antialiased : {false, true}) {
        SCOPED_TRACE(testing::Message() << "antialiased " << antialiased);
        auto paint = [&](bool offset, bool batched) {
            return PaintToImage(
                size,
                [&](wxDC& dc) {
                    dc.GetGraphicsContext()->EnableOffset(offset);
                    dc.SetPen(pen);
                    if (!batched) {
                        for (const Line& l : lines)
                            dc.DrawLine(l.x1, l.y1, l.x2, l.y2);
                        return;
                    }
                    VyrLineBatch batch(&dc);
                    EXPECT_TRUE(batch.IsStamping());
                    for (const Line& l : lines)
                        batch.Line(l.x1, l.y1, l.x2, l.y2);
                },
                antialiased);
        };
        const wxImage drawn = paint(true, false);
        // The two settings do give other pixels, so the comparison below can tell them apart.
        ASSERT_GT(CountDifferentPixels(drawn, paint(false, false), 1), 1000);
        // Before and after a picture without the offset has learnt its own shapes. Antialiased,
        // where many lines pile up on one pixel the blends' roundings add up: a few units of a
        // channel on a few pixels (the wrong shapes are tens of units off on thousands).
        for (int picture = 0; picture < 2; ++picture) {
            if (picture == 1)
                paint(false, true);
            const wxImage batched = paint(true, true);
            EXPECT_EQ(CountDifferentPixels(batched, drawn, antialiased ? 7 : 0), 0);
            EXPECT_LT(CountDifferentPixels(batched, drawn, 0), antialiased ? 300 : 1);
        }
    }
}

// A context that is not an image, and a pen that is not solid, get every line through
// DrawLine, in order.
TEST(VyrLineBatch, OtherContextsAndPensDrawEachLine) {
    RecordingDC recording;
    recording.SetPen(wxPen(*wxRED, 1, wxPENSTYLE_SOLID));
    {
        VyrLineBatch batch(&recording);
        EXPECT_FALSE(batch.IsStamping());
        batch.Line(1, 2, 3, 4);
        batch.Line(wxPoint(5, 6), wxPoint(5, 60));
    }
    const auto lines = recording.Primitives(Kind::Line);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].From(), wxPoint(1, 2));
    EXPECT_EQ(lines[0].To(), wxPoint(3, 4));
    EXPECT_EQ(lines[1].From(), wxPoint(5, 6));
    EXPECT_EQ(lines[1].To(), wxPoint(5, 60));

    const wxPen dashed(*wxBLUE, 1, wxPENSTYLE_SHORT_DASH);
    const wxImage drawn = PaintToImage(
        wxSize(100, 100),
        [&](wxDC& dc) {
            dc.SetPen(dashed);
            dc.DrawLine(10, 10, 10, 90);
            dc.DrawLine(20, 10, 21, 90);
        },
        false);
    const wxImage batched = PaintToImage(
        wxSize(100, 100),
        [&](wxDC& dc) {
            dc.SetPen(dashed);
            VyrLineBatch batch(&dc);
            EXPECT_FALSE(batch.IsStamping());
            batch.Line(10, 10, 10, 90);
            batch.Line(20, 10, 21, 90);
        },
        false);
    EXPECT_EQ(CountDifferentPixels(batched, drawn, 0), 0);
    EXPECT_GT(CountDifferentPixels(drawn,
                                   PaintToImage(
                                       wxSize(100, 100), [](wxDC&) {}, false),
                                   0),
              40);
}
