#include "diagram/VyrLineBatch.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <vector>

#include <wx/dcgraph.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include "diagram/VyrPixelBlend.h"

namespace {

// Pens up to this width are stamped (the widths the tests pin); wider ones draw their lines.
const int kMaxPenWidth = 4;
// Antialiased, only the one-pixel pen: the renderer rasterises wider pens' caps a little
// differently from one whole-pixel position to the next.
const int kMaxAntialiasedWidth = 1;
// Lines up to this long on their long side, and this short on their short side, are learnt.
const int kMaxLength = 1024;
const int kMaxAcross = 2;
// The cells all shapes kept by a thread may hold (six bytes each); past it they are forgotten
// and learnt anew.
const size_t kMaxCells = size_t(1) << 20;

}  // namespace

struct VyrLineBatch::Shape {
    struct Cell {
        int16_t dx, dy;  // from the line's start
        uint8_t keep;    // 255 - the line's cover of the pixel (0..254)
    };
    // Two partly covered pixels side by side, (dx, dy) and (dx + 1, dy), blended at once.
    struct Pair {
        int16_t dx, dy;
        uint8_t keep0, keep1;
    };
    std::vector<Pair> pairs;
    std::vector<Cell> cells;  // the other partly covered pixels
    std::vector<Cell> whole;  // wholly covered pixels: they take the colour itself
    // Extent of the cells around the start.
    int left = 0, right = 0, top = 0, bottom = 0;
};

namespace {

// The shapes a thread has learnt: by look and (dx, dy). Nothing in it depends on more than
// its key, so it changes no picture.
struct ShapeCache {
    std::unordered_map<uint64_t, std::unique_ptr<VyrLineBatch::Shape>> shapes;
    size_t cells = 0;
};

ShapeCache& Cache() {
    thread_local ShapeCache cache;
    return cache;
}

uint64_t KeyOf(uint64_t look, int dx, int dy) {
    return (look << 32) | (uint64_t(uint16_t(dx + 0x4000)) << 16) | uint64_t(uint16_t(dy + 0x4000));
}

}  // namespace

VyrLineBatch::VyrLineBatch(wxDC* dc) : m_dc(dc) {
    if (!m_dc || !m_dc->IsOk())
        return;
    const wxPen& pen = m_dc->GetPen();
    if (!pen.IsOk() || pen.GetStyle() != wxPENSTYLE_SOLID || pen.GetWidth() < 0 ||
        pen.GetWidth() > kMaxPenWidth || !m_target.Take(m_dc, pen.GetColour()))
        return;
    if (m_target.antialias != wxANTIALIAS_NONE && pen.GetWidth() > kMaxAntialiasedWidth)
        return;
    m_pen = pen;
    m_pen.SetColour(*wxWHITE);
    m_iLook = uint64_t(pen.GetWidth()) | (uint64_t(pen.GetCap() & 0xFF) << 8) |
              (uint64_t(pen.GetJoin() & 0xFF) << 16) | (uint64_t(m_target.antialias & 0xFF) << 24) |
              (uint64_t(m_target.offset) << 32);
    for (unsigned cover = 0; cover < 256; ++cover)
        m_share[cover] = VyrPixelBlend::ColourShare(m_target.colourBytes, cover);
    // What cairo drew before reaches the memory that is blended into.
    m_target.Flush();
    m_bStamping = true;
}

VyrLineBatch::~VyrLineBatch() {
    if (m_bDirty)
        m_target.MarkDirty();
}

void VyrLineBatch::Draw(int x1, int y1, int x2, int y2) {
    if (m_bDirty) {
        m_target.MarkDirty();
        m_bDirty = false;
    }
    m_dc->DrawLine(x1, y1, x2, y2);
    if (m_bStamping)
        m_target.Flush();
}

void VyrLineBatch::Line(int x1, int y1, int x2, int y2) {
    if (!m_dc)
        return;
    // Far-away ends (a point far outside the plot) are left to the renderer: the arithmetic
    // below stays well inside int.
    auto near = [](int v) { return v > -(1 << 28) && v < (1 << 28); };
    const bool ends = near(x1) && near(y1) && near(x2) && near(y2);
    const Shape* shape = m_bStamping && ends ? ShapeOf(x2 - x1, y2 - y1) : nullptr;
    if (!shape) {
        Draw(x1, y1, x2, y2);
        return;
    }
    m_dc->CalcBoundingBox(x1, y1);
    m_dc->CalcBoundingBox(x2, y2);
    const int cx = x1 + m_target.shift.x;
    const int cy = y1 + m_target.shift.y;
    const wxRect& clip = m_target.clip;
    m_bDirty = true;
    if (cx + shape->left >= clip.x && cx + shape->right <= clip.GetRight() &&
        cy + shape->top >= clip.y && cy + shape->bottom <= clip.GetBottom()) {
        // The usual case: the whole line lies inside the clip.
        uint8_t* start = m_target.At(cx, cy);
        const ptrdiff_t stride = m_target.stride;
        // Written without being read: no wait for the image's memory.
        for (const Shape::Cell& cell : shape->whole)
            std::memcpy(start + cell.dy * stride + cell.dx * 4, &m_share[255], 4);
        for (const Shape::Pair& pair : shape->pairs)
            VyrPixelBlend::OverPair(start + pair.dy * stride + pair.dx * 4, pair.keep0,
                                    m_share[255u - pair.keep0], pair.keep1,
                                    m_share[255u - pair.keep1]);
        for (const Shape::Cell& cell : shape->cells)
            VyrPixelBlend::Over(start + cell.dy * stride + cell.dx * 4, cell.keep,
                                m_share[255u - cell.keep]);
        return;
    }
    auto inside = [&](const Shape::Cell& cell) {
        const int x = cx + cell.dx;
        const int y = cy + cell.dy;
        return x >= clip.x && x <= clip.GetRight() && y >= clip.y && y <= clip.GetBottom();
    };
    for (const Shape::Cell& cell : shape->whole)
        if (inside(cell))
            std::memcpy(m_target.At(cx + cell.dx, cy + cell.dy), &m_share[255], 4);
    for (const Shape::Pair& pair : shape->pairs) {
        for (int k = 0; k < 2; ++k) {
            const Shape::Cell cell{int16_t(pair.dx + k), pair.dy, k ? pair.keep1 : pair.keep0};
            if (inside(cell))
                VyrPixelBlend::Over(m_target.At(cx + cell.dx, cy + cell.dy), cell.keep,
                                    m_share[255u - cell.keep]);
        }
    }
    for (const Shape::Cell& cell : shape->cells)
        if (inside(cell))
            VyrPixelBlend::Over(m_target.At(cx + cell.dx, cy + cell.dy), cell.keep,
                                m_share[255u - cell.keep]);
}

const VyrLineBatch::Shape* VyrLineBatch::ShapeOf(int dx, int dy) {
    const int across = std::min(std::abs(dx), std::abs(dy));
    const int along = std::max(std::abs(dx), std::abs(dy));
    if (across > kMaxAcross || along > kMaxLength)
        return nullptr;
    ShapeCache& cache = Cache();
    const uint64_t key = KeyOf(m_iLook, dx, dy);
    auto found = cache.shapes.find(key);
    if (found != cache.shapes.end())
        return found->second.get();  // null: a shape that could not be learnt, drawn
    std::unique_ptr<Shape> shape = Learn(dx, dy);
    const size_t cells =
        shape ? shape->cells.size() + shape->whole.size() + 2 * shape->pairs.size() : 0;
    if (cache.cells + cells > kMaxCells) {
        cache.shapes.clear();
        cache.cells = 0;
    }
    cache.cells += cells;
    return (cache.shapes[key] = std::move(shape)).get();
}

std::unique_ptr<VyrLineBatch::Shape> VyrLineBatch::Learn(int dx, int dy) const {
    // Drawn in white on black with room around it for the pen, its caps and the antialiasing:
    // each pixel is then the fraction of it that the line covers.
    const int room = m_pen.GetWidth() + 3;
    const int width = std::abs(dx) + 2 * room + 1;
    const int height = std::abs(dy) + 2 * room + 1;
    const int x0 = room + std::max(0, -dx);
    const int y0 = room + std::max(0, -dy);
    wxImage image(width, height, true);  // black
    {
        wxGraphicsContext* gc =
            wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image);
        if (!gc)
            return nullptr;
        wxGCDC dc(gc);
        gc->SetAntialiasMode(m_target.antialias);
        gc->EnableOffset(m_target.offset);
        dc.SetPen(m_pen);
        dc.DrawLine(x0, y0, x0 + dx, y0 + dy);
    }
    std::unique_ptr<Shape> shape(new Shape);
    const unsigned char* rgb = image.GetData();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const unsigned char* px = rgb + 3 * (size_t(y) * width + x);
            if (px[0] != px[1] || px[1] != px[2])
                return nullptr;
            if (px[0] == 0)
                continue;
            if (x == 0 || y == 0 || x == width - 1 || y == height - 1)
                return nullptr;  // the line may reach past the image
            const Shape::Cell cell{int16_t(x - x0), int16_t(y - y0), uint8_t(255u - px[0])};
            (cell.keep == 0 ? shape->whole : shape->cells).push_back(cell);
            shape->left = std::min(shape->left, int(cell.dx));
            shape->right = std::max(shape->right, int(cell.dx));
            shape->top = std::min(shape->top, int(cell.dy));
            shape->bottom = std::max(shape->bottom, int(cell.dy));
        }
    }
    // Partly covered pixels side by side on a row go in pairs.
    std::vector<Shape::Cell> partial;
    partial.swap(shape->cells);
    for (size_t k = 0; k < partial.size(); ++k) {
        const Shape::Cell& a = partial[k];
        if (k + 1 < partial.size() && partial[k + 1].dy == a.dy && partial[k + 1].dx == a.dx + 1) {
            shape->pairs.push_back({a.dx, a.dy, a.keep, partial[k + 1].keep});
            ++k;
        } else {
            shape->cells.push_back(a);
        }
    }
    return shape;
}
