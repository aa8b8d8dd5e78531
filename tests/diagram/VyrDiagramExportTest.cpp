#include <cerrno>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/image.h>

#include "file/FileTestSupport.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"
#include "vyrbase/file/VyrSafeFile.h"

using namespace filetest;

namespace {

// The oscillation sample, active (its interval tools are drawn from the active document), its
// second diagram shown.
class Oscillation {
public:
    Oscillation() : doc(nullptr) {
        loaded = doc.Load(Wx(SampleFile("oscillation.vyr")));
        doc.SetDiagramCount(2);
        VyrBaseData::SetActiveBase(&doc);
    }
    ~Oscillation() { VyrBaseData::SetActiveBase(nullptr); }
    VyrDiagram* Diagram(int index) { return doc.GetDiagram(index); }

    VyrBaseData doc;
    bool loaded = false;
};

size_t Count(const std::string& text, const std::string& what) {
    size_t n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

typedef bool (*SaveByPath)(VyrDiagram*, const wxString&, int, int, double);

struct Format {
    const char* name;
    VyrDiagramExport::Format format;
    SaveByPath save;
    const char* magic;
};

const Format kFormats[] = {
    {"picture.png", VyrDiagramExport::kFormatPng, &VyrDiagramExport::SaveAsPng, "\x89PNG"},
    {"picture.svg", VyrDiagramExport::kFormatSvg, &VyrDiagramExport::SaveAsSvg, "<?xml"},
    {"picture.pdf", VyrDiagramExport::kFormatPdf, &VyrDiagramExport::SaveAsPdf, "%PDF-"},
};

}  // namespace

TEST(VyrDiagramExport, TheFormatIsTheExtensionInAnyLetterCase) {
    VyrDiagramExport::Format format = VyrDiagramExport::kFormatSvg;
    EXPECT_TRUE(VyrDiagramExport::GetFormatOfPath("dir.d/a.PNG", &format));
    EXPECT_EQ(VyrDiagramExport::kFormatPng, format);
    EXPECT_TRUE(VyrDiagramExport::GetFormatOfPath("b.svg", &format));
    EXPECT_EQ(VyrDiagramExport::kFormatSvg, format);
    EXPECT_TRUE(VyrDiagramExport::GetFormatOfPath("c.Pdf", &format));
    EXPECT_EQ(VyrDiagramExport::kFormatPdf, format);
    EXPECT_FALSE(VyrDiagramExport::GetFormatOfPath("d.gif", &format));
    EXPECT_FALSE(VyrDiagramExport::GetFormatOfPath("pdf", &format));
    EXPECT_EQ(VyrDiagramExport::kFormatPdf, format);
    EXPECT_EQ("pdf", VyrDiagramExport::GetExtension(VyrDiagramExport::kFormatPdf));
}

TEST(VyrDiagramExport, EveryFormatWritesItsFileAndNothingElse) {
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    TempDir dir;
    for (const Format& f : kFormats) {
        SCOPED_TRACE(f.name);
        const std::string path = dir.File(f.name);
        ASSERT_TRUE(f.save(osc.Diagram(0), Wx(path), 300, 200, 1.0));
        EXPECT_EQ(0u, ReadBytes(path).rfind(f.magic, 0));
    }
    EXPECT_EQ(3u, DirEntries(dir.Path()).size());
}

TEST(VyrDiagramExport, SvgHoldsWhatIsPaintedAfterTheAxesInPixels) {
    // Curves, labels, notes and the title come after the axes release their clipping region; a
    // context that lost its clip there drew the background and the two axis lines alone.
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    TempDir dir;
    const std::string path = dir.File("osc.svg");
    ASSERT_TRUE(VyrDiagramExport::SaveAsSvg(osc.Diagram(0), Wx(path), 600, 400, 1.0));
    const std::string svg = ReadBytes(path);
    EXPECT_NE(std::string::npos, svg.find("width=\"600px\" height=\"400px\""));
    // The voltage curve (200, 0, 0) as paths, and glyphs for the texts.
    EXPECT_GT(Count(svg, "stroke:rgb(78.431373%,0%,0%)"), 0u);
    EXPECT_GT(Count(svg, "<symbol"), 20u);
    EXPECT_GT(Count(svg, "<path"), 100u);
    EXPECT_EQ(0u, Count(svg, "<image"));
}

TEST(VyrDiagramExport, PdfPagesAreOneADiagramOfTheSizeInPoints) {
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    TempDir dir;
    const std::string one = dir.File("one.pdf");
    ASSERT_TRUE(VyrDiagramExport::SaveAsPdf(osc.Diagram(0), Wx(one), 320, 240, 1.0));
    const std::string pdf = ReadBytes(one);
    EXPECT_EQ(1u, Count(pdf, "/Type /Page\n") + Count(pdf, "/Type /Page "));
    EXPECT_NE(std::string::npos, pdf.find("/MediaBox [ 0 0 320 240 ]"));
    EXPECT_GT(Count(pdf, "/FontFile"), 0u);  // the fonts are embedded

    const std::string two = dir.File("two.pdf");
    ASSERT_TRUE(
        VyrDiagramExport::SaveAsPdfPages({osc.Diagram(0), osc.Diagram(1)}, Wx(two), 320, 240, 1.0));
    const std::string pages = ReadBytes(two);
    EXPECT_EQ(2u, Count(pages, "/MediaBox [ 0 0 320 240 ]"));
}

TEST(VyrDiagramExport, BadArgumentsWriteNothing) {
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    TempDir dir;
    const wxString path = Wx(dir.File("bad.pdf"));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPdf(nullptr, path, 300, 200, 1.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPdf(osc.Diagram(0), path, 15, 200, 1.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPdf(osc.Diagram(0), path, 300, 15, 1.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPdf(osc.Diagram(0), path, 300, 200, 0.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPdfPages({}, path, 300, 200, 1.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPdfPages({osc.Diagram(0), nullptr}, path, 300, 200, 1.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsPng(nullptr, path, 300, 200, 1.0));
    EXPECT_FALSE(VyrDiagramExport::SaveAsSvg(osc.Diagram(0), path, 300, 200, -1.0));
    wxImage image;
    EXPECT_FALSE(VyrDiagramExport::PaintToImage(nullptr, image, 300, 200, 1.0));
    EXPECT_TRUE(DirEntries(dir.Path()).empty());
}

TEST(VyrDiagramExport, AFullDiskLeavesThePreviousFileAndTellsWhy) {
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    TempDir dir;
    for (const Format& f : kFormats) {
        SCOPED_TRACE(f.name);
        const std::string path = dir.File(f.name);
        WriteBytes(path, "previous");
        // Every write fails from the first one on, as on a disk that is full.
        VyrFileFaults::Arm(VyrFileFaults::kWrite, 1, true, ENOSPC);
        VyrSafeFile file(Wx(path));
        EXPECT_FALSE(VyrDiagramExport::Save(osc.Diagram(0), f.format, file, 300, 200, 1.0));
        EXPECT_GT(VyrFileFaults::Injected(), 0);
        VyrFileFaults::Disarm();
        EXPECT_EQ(VyrSafeFile::kStepWrite, file.GetFailedStep());
        EXPECT_EQ(ENOSPC, file.GetError());
        EXPECT_EQ("previous", ReadBytes(path));
        EXPECT_EQ(1u, DirEntries(dir.Path()).size());
        std::remove(path.c_str());
    }
}

TEST(VyrDiagramExport, AWriteThatFailsLateStillLeavesThePreviousFile) {
    // The vector surfaces write most of their file when they are finished, the image writer as
    // it goes: a failure at the end counts as much as one at the start.
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    TempDir dir;
    for (const Format& f : kFormats) {
        SCOPED_TRACE(f.name);
        const std::string path = dir.File(f.name);
        WriteBytes(path, "previous");
        VyrFileFaults::Arm(VyrFileFaults::kWrite, 0, false, EIO);
        ASSERT_TRUE(f.save(osc.Diagram(0), Wx(path), 300, 200, 1.0));
        const long writes = VyrFileFaults::Count();
        ASSERT_GT(writes, 0);
        WriteBytes(path, "previous");
        VyrFileFaults::Arm(VyrFileFaults::kWrite, writes, false, EIO);
        EXPECT_FALSE(f.save(osc.Diagram(0), Wx(path), 300, 200, 1.0));
        EXPECT_EQ(1, VyrFileFaults::Injected());
        VyrFileFaults::Disarm();
        EXPECT_EQ("previous", ReadBytes(path));
        EXPECT_EQ(1u, DirEntries(dir.Path()).size());
        std::remove(path.c_str());
    }
}

TEST(VyrDiagramExport, ExportingLeavesTheDiagramsPlotRectangle) {
    FaultsOff off;
    Oscillation osc;
    ASSERT_TRUE(osc.loaded);
    wxRect view(5, 6, 700, 500);
    osc.Diagram(0)->Move(view);
    TempDir dir;
    ASSERT_TRUE(VyrDiagramExport::SaveAsPdf(osc.Diagram(0), Wx(dir.File("a.pdf")), 300, 200, 2.0));
    wxRect after;
    osc.Diagram(0)->GetRect(after);
    EXPECT_EQ(view, after);
}
