#include "support/ReferenceImage.h"

#include <cstdlib>
#include <cstring>

#include <wx/filefn.h>
#include <wx/filename.h>

namespace {

bool UpdateRequested() {
    const char* value = std::getenv("VYR_UPDATE_REFERENCES");
    return value && std::strcmp(value, "1") == 0;
}

}  // namespace

wxImage MakeFilledImage(int width, int height, const wxColour& colour) {
    wxImage image(width, height, false);
    image.SetRGB(wxRect(0, 0, width, height), colour.Red(), colour.Green(), colour.Blue());
    return image;
}

::testing::AssertionResult MatchesReference(const wxImage& rendered, const wxString& relativePath,
                                            int channelTolerance, double maxFraction) {
    const wxString path = wxString(VYR_TEST_DATA_DIR) + "/" + relativePath;
    if (UpdateRequested()) {
        wxFileName::Mkdir(wxFileName(path).GetPath(), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
        if (!rendered.SaveFile(path, wxBITMAP_TYPE_PNG))
            return ::testing::AssertionFailure() << "cannot write " << path;
        return ::testing::AssertionSuccess() << "reference written: " << path;
    }
    if (!wxFileExists(path))
        return ::testing::AssertionFailure()
               << "no reference " << path << " (run with VYR_UPDATE_REFERENCES=1 to create it)";
    wxImage reference;
    if (!reference.LoadFile(path, wxBITMAP_TYPE_PNG))
        return ::testing::AssertionFailure() << "cannot read " << path;

    const wxString actualPath =
        wxFileName::GetTempDir() + "/" + wxFileName(relativePath).GetName() + ".actual.png";
    if (reference.GetSize() != rendered.GetSize()) {
        rendered.SaveFile(actualPath, wxBITMAP_TYPE_PNG);
        return ::testing::AssertionFailure()
               << "size " << rendered.GetWidth() << "x" << rendered.GetHeight()
               << " differs from the reference's " << reference.GetWidth() << "x"
               << reference.GetHeight() << "; rendered picture written to " << actualPath;
    }
    const int width = rendered.GetWidth();
    const int height = rendered.GetHeight();
    long differing = 0;
    int worst = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int dr = std::abs(rendered.GetRed(x, y) - reference.GetRed(x, y));
            const int dg = std::abs(rendered.GetGreen(x, y) - reference.GetGreen(x, y));
            const int db = std::abs(rendered.GetBlue(x, y) - reference.GetBlue(x, y));
            const int d = std::max(dr, std::max(dg, db));
            worst = std::max(worst, d);
            if (d > channelTolerance)
                ++differing;
        }
    }
    const double fraction = static_cast<double>(differing) / (static_cast<double>(width) * height);
    if (fraction > maxFraction) {
        rendered.SaveFile(actualPath, wxBITMAP_TYPE_PNG);
        return ::testing::AssertionFailure()
               << differing << " pixels (" << fraction * 100 << " %) differ from " << path
               << " by more than " << channelTolerance << " (largest difference " << worst
               << "); rendered picture written to " << actualPath;
    }
    return ::testing::AssertionSuccess();
}
