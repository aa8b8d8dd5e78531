// The table import on any bytes, with every separator and decimal setting in turn (the input's
// length picks one, so that each input is also read as a user forcing a setting would read it).
// A refused table leaves the document as it was and tells nobody; an imported one is one
// experiment whose curves all have the table's rows, one X column shared, one curve for each
// column reported as one, the invalid cells counted column by column, and it reads back from
// the document file as it was built.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzSupport.h"
#include "file/VyrNumberText.h"
#include "vyrbase/VyrBase.h"

namespace {

// Counts the notifications: loads, creations (which a load does not send) and all.
class Counter : public VyrObserver {
public:
    void OnUpdateObserver(VyrObserverMsg& msg) override {
        ++all;
        last = msg.GetMsg();
        loaded += last == VYR_MSG_FILE_LOADED;
        created += last == VYR_MSG_CURVE_CREATED || last == VYR_MSG_EXPERIENCE_CREATED;
    }
    void OnInitialUpdateObserver() override {}
    int all = 0;
    int last = 0;
    int loaded = 0;
    int created = 0;
};

struct Setting {
    wchar_t separator;
    wchar_t decimal;
    int skip;
    int header;
    bool sentinel;  // -999 marks a missing value
};

const Setting kSettings[] = {
    {0, 0, 0, -1, false},     {L';', 0, 0, -1, false},    {L',', 0, 0, -1, false},
    {L'\t', 0, 0, -1, false}, {L' ', 0, 0, -1, false},    {0, L',', 0, -1, false},
    {0, L'.', 1, -1, false},  {0, 0, 0, 0, false},        {L';', L',', 0, 2, false},
    {0, 0, 0, -1, true},      {L',', L',', 0, -1, false},
};

// A number as the document file gives it back ("%g").
double AsWritten(double value) {
    char digits[VyrNumberText::kMaxChars];
    return VyrNumberText::ReadDouble(
        std::string_view(digits, VyrNumberText::FormatG(digits, value)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vyrfuzz::StartToolkit();
    VyrBaseData doc(nullptr);
    // What a refusal must leave: a document of a small table of its own.
    VyrTableImport first;
    const char kBefore[] = "t (s);U (V)\n0;1\n1;2\n";
    vyrfuzz::Check(first.ImportMemory(doc, kBefore, std::strlen(kBefore), L"before"),
                   "a plain table imports");
    const std::string before = vyrfuzz::Describe(doc);

    Counter counter;
    doc.AddObserver(&counter);
    VyrTableImport import;
    const Setting& s = kSettings[size % (sizeof kSettings / sizeof kSettings[0])];
    vyrfuzz::Check(import.SetSeparator(s.separator) && import.SetDecimalMark(s.decimal),
                   "the settings are accepted");
    import.SetSkipLines(s.skip);
    import.SetHeaderLines(s.header);
    if (s.sentinel)
        import.AddMissingValue(-999);
    const bool ok = import.ImportMemory(doc, data, size, L"fuzz");
    vyrfuzz::Check(counter.created == 0, "an import sends no creations, as a load");
    if (!ok) {
        vyrfuzz::Check(import.GetError() != VyrTableImport::kErrorNone, "a refusal says why");
        if (import.GetError() != VyrTableImport::kErrorMemory) {
            vyrfuzz::Check(counter.all == 0, "a refused table notifies nothing");
            vyrfuzz::CheckSame(before, vyrfuzz::Describe(doc), "a refused table changes nothing");
        }
        doc.RemoveObserver(&counter);
        return 0;
    }
    vyrfuzz::Check(counter.loaded == 1 && counter.last == VYR_MSG_FILE_LOADED,
                   "an import ends by notifying code 8, once");
    doc.RemoveObserver(&counter);

    const int rows = static_cast<int>(import.GetRowCount());
    const int columns = import.GetColumnCount();
    vyrfuzz::Check(rows > 0 && columns > 0 && columns <= VyrTableImport::kMaxColumns,
                   "an import has rows and columns");
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    vyrfuzz::Check(node != nullptr, "an import makes an experiment");
    VyrExperience* e = doc.GetNextExperience(&node);
    vyrfuzz::Check(node == nullptr && e->GetEntityName() == L"fuzz",
                   "one experiment, named as asked");
    const std::vector<VyrTableImport::ColumnReport>& reports = import.GetColumnReports();
    vyrfuzz::Check(static_cast<int>(reports.size()) == columns, "every column is reported");
    const int x = import.GetAbscissaColumn();
    vyrfuzz::Check(x >= -1 && x < columns, "the abscissa is a column or the row number");
    vyrfuzz::Check(x < 0 || reports[x].use == VyrTableImport::kColumnAbscissa,
                   "the abscissa's column says so");
    size_t curves = 0, holes = x >= 0 ? reports[x].holes : 0;
    for (const VyrTableImport::ColumnReport& r : reports)
        if (r.use == VyrTableImport::kColumnCurve) {
            ++curves;
            holes += r.holes;
        }
    vyrfuzz::Check(static_cast<size_t>(e->GetNbCourbe()) == curves,
                   "one curve per column of numbers");
    vyrfuzz::Check(holes == import.GetInvalidCount(), "the holes of the columns add up");
    VyrVecteur* x0 = nullptr;
    size_t invalid = 0;
    for (wxVyrListCourbeNode* c = e->GetCourbes().GetFirst(); c; c = c->GetNext()) {
        VyrCourbe* curve = c->GetData();
        VyrVecteur* vx = curve->GetVx();
        VyrVecteur* vy = curve->GetVy();
        vyrfuzz::Check(vx && vy && vx->GetSize() == rows && vy->GetSize() == rows,
                       "every vector holds every row");
        vyrfuzz::Check(curve->IsShownInDiagram(0), "the curves are shown");
        if (!x0) {
            x0 = vx;
            for (int i = 0; i < rows; ++i)
                invalid += vx->IsValidAt(i) ? 0 : 1;
        } else {
            vyrfuzz::Check(std::memcmp(vx->GetArea(), x0->GetArea(), rows * sizeof(double)) == 0,
                           "the curves share the X column");
        }
        for (int i = 0; i < rows; ++i) {
            invalid += vy->IsValidAt(i) ? 0 : 1;
            vyrfuzz::Check(vy->GetArea()[i] == vy->GetArea()[i], "no value is NaN");
        }
    }
    vyrfuzz::Check(invalid == import.GetInvalidCount(), "the invalid cells are counted");

    // The document file keeps what was imported (but the vectors' own names, which it does
    // not write).
    // Kept by the file as it is: a quantity or unit holding a backslash reads back with pairs
    // of them halved, and a unit is cut at its "@".
    // Numbers are written with six significant digits: the document is compared at that
    // precision.
    bool plain = true;
    for (wxVyrListCourbeNode* c = e->GetCourbes().GetFirst(); c; c = c->GetNext()) {
        VyrScale& scale = c->GetData()->GetScale();
        scale = VyrScale(AsWritten(scale.GetXmin()), AsWritten(scale.GetXmax()),
                         AsWritten(scale.GetYmin()), AsWritten(scale.GetYmax()));
        for (VyrVecteur* v : {c->GetData()->GetVx(), c->GetData()->GetVy()}) {
            for (int i = 0; i < v->GetSize(); ++i)
                v->GetArea()[i] = AsWritten(v->GetArea()[i]);
            v->SetEntityName(L"");
            plain = plain && v->GetGrandeur().find(L'\\') == wxString::npos &&
                    v->GetUnite().find_first_of(L"\\@") == wxString::npos;
            for (wxUniChar ch : v->GetGrandeur() + v->GetUnite())
                vyrfuzz::Check(ch >= 0x20, "names and units hold no control character");
        }
    }
    if (plain && vyrfuzz::ReadsBackAsWritten(doc)) {
        bool saved = false;
        const std::string bytes = vyrfuzz::SaveToMemory(doc, &saved);
        vyrfuzz::Check(saved, "an imported table saves");
        VyrBaseData back(nullptr);
        vyrfuzz::Check(back.LoadFromMemory(bytes.data(), bytes.size()), "and loads");
        vyrfuzz::CheckSame(vyrfuzz::Describe(doc), vyrfuzz::Describe(back),
                           "an imported table reads back as it was built");
    }
    return 0;
}
