// A table read as its bytes arrive, on any bytes cut into pieces of any size (the first byte
// picks it; 0 feeds the rest whole), with the recording started again half way when the second
// byte is odd. Every experiment it made holds curves of equal lengths that share their X, every
// X valid (a line without abscissa is skipped), no value NaN; the rows, and the invalid cells,
// add up to what it reports.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "FuzzSupport.h"
#include "vyrbase/VyrBase.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vyrfuzz::StartToolkit();
    if (size < 2)
        return 0;
    const size_t piece = data[0] % 64;
    const bool again = data[1] % 2 == 1;
    data += 2;
    size -= 2;

    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"fuzz");
    size_t at = 0;
    while (at < size) {
        const size_t n = piece == 0 ? size - at : std::min(piece, size - at);
        const size_t rowsBefore = live.GetRowCount();
        const size_t added = live.Feed(data + at, n);
        vyrfuzz::Check(live.GetRowCount() == rowsBefore + added, "a feed answers its rows");
        at += n;
        if (again && at >= size / 2 && at - n < size / 2)
            live.Start(L"fuzz");
    }
    live.Finish();

    size_t rows = 0, invalid = 0;
    for (wxVyrListEntityNode* node = doc.GetFirstExperienceNode(); node;) {
        VyrExperience* e = doc.GetNextExperience(&node);
        const VyrVecteur* x0 = nullptr;
        for (wxVyrListCourbeNode* c = e->GetCourbes().GetFirst(); c; c = c->GetNext()) {
            VyrCourbe* curve = c->GetData();
            const VyrVecteur* vx = curve->GetVx();
            const VyrVecteur* vy = curve->GetVy();
            vyrfuzz::Check(vx && vy && vx->GetSize() == vy->GetSize(),
                           "a curve's vectors have one length");
            vyrfuzz::Check(vx->GetSize() > 0, "a curve is made with its first row");
            vyrfuzz::Check(curve->IsShownInDiagram(0), "the curves are shown");
            if (!x0) {
                x0 = vx;
                rows += static_cast<size_t>(vx->GetSize());
                for (int i = 0; i < vx->GetSize(); ++i)
                    vyrfuzz::Check(vx->IsValidAt(i) && vx->GetVal(i) == vx->GetVal(i),
                                   "every abscissa is a number");
            } else {
                vyrfuzz::Check(vx->GetSize() == x0->GetSize() &&
                                   std::memcmp(vx->GetArea(), x0->GetArea(),
                                               vx->GetSize() * sizeof(double)) == 0,
                               "the curves of an experiment share their X");
            }
            for (int i = 0; i < vy->GetSize(); ++i) {
                vyrfuzz::Check(vy->GetVal(i) == vy->GetVal(i), "no value is NaN");
                invalid += vy->IsValidAt(i) ? 0 : 1;
            }
        }
    }
    vyrfuzz::Check(rows == live.GetRowCount(), "the rows are in the document");
    vyrfuzz::Check(invalid == live.GetInvalidCount(), "the invalid cells are counted");
    return 0;
}
