// Helpers of the table import tests: a table imported from bytes or from a file of
// tests/data/tables, and its columns read back.
#ifndef VYR_TESTS_FILE_TABLETESTSUPPORT_H
#define VYR_TESTS_FILE_TABLETESTSUPPORT_H

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "vyrbase/VyrBase.h"

namespace tabletest {

using filetest::Latin1;
using filetest::Utf8;

// One column of an imported document as read back: its quantity, unit and values, an invalid
// point read as NaN.
struct ColumnSeen {
    wxString quantity;
    wxString unit;
    std::vector<double> values;
};

inline ColumnSeen See(VyrVecteur* v) {
    ColumnSeen c;
    c.quantity = v->GetGrandeur();
    c.unit = v->GetUnite();
    for (int i = 0; i < v->GetSize(); ++i)
        c.values.push_back(v->IsValidAt(i) ? v->GetVal(i) : NAN);
    return c;
}

inline std::vector<VyrCourbe*> Curves(VyrBaseData& doc) {
    std::vector<VyrCourbe*> curves;
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node)
        curves.push_back(doc.GetNextCourbe(&node));
    return curves;
}

// The columns of the table: X (the first curve's), then every curve's Y.
inline std::vector<ColumnSeen> Columns(VyrBaseData& doc) {
    std::vector<ColumnSeen> columns;
    std::vector<VyrCourbe*> curves = Curves(doc);
    if (curves.empty())
        return columns;
    columns.push_back(See(curves[0]->GetVx()));
    for (VyrCourbe* c : curves)
        columns.push_back(See(c->GetVy()));
    return columns;
}

inline bool Import(VyrBaseData& doc, const std::string& bytes, VyrTableImport& import) {
    return import.ImportMemory(doc, bytes.data(), bytes.size(), L"table");
}

inline bool Import(VyrBaseData& doc, const std::string& bytes) {
    VyrTableImport import;
    return Import(doc, bytes, import);
}

inline void ExpectValues(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        if (std::isnan(expected[i]))
            EXPECT_TRUE(std::isnan(actual[i])) << "point " << i << " should be invalid";
        else
            EXPECT_EQ(actual[i], expected[i]) << "point " << i;
    }
}

inline void ExpectColumn(const ColumnSeen& c, const wchar_t* quantity, const wchar_t* unit,
                         const std::vector<double>& values) {
    EXPECT_EQ(c.quantity, quantity);
    EXPECT_EQ(c.unit, unit);
    ExpectValues(c.values, values);
}

// Records the codes a document sends.
class Recorder : public VyrObserver {
public:
    void OnUpdateObserver(VyrObserverMsg& msg) override { codes.push_back(msg.GetMsg()); }
    void OnInitialUpdateObserver() override {}
    std::vector<int> codes;
};

// The table tests/data/tables/`name` imported as its file is (the experiment named after it).
inline bool ImportData(VyrBaseData& doc, const std::string& name, VyrTableImport& import) {
    return import.ImportFile(doc, filetest::Wx(std::string(VYR_TEST_DATA_DIR) + "/tables/" + name));
}

// The curve whose Y has the quantity `quantity`, or null.
inline VyrCourbe* CurveOf(VyrBaseData& doc, const wchar_t* quantity) {
    for (VyrCourbe* c : Curves(doc))
        if (c->GetVy()->GetGrandeur() == quantity)
            return c;
    return nullptr;
}

// The comment of the document's one experiment.
inline wxString ExperimentComment(VyrBaseData& doc) {
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    return node ? doc.GetNextExperience(&node)->GetCommentaire() : wxString();
}

}  // namespace tabletest

#endif
