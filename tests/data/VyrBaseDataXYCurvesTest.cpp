#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"

using namespace vyrtest;

TEST(VyrBaseDataXYCurves, RemovesMarkedCurvesWhoseXUnitNoDiagramShows) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbeParam p = Param("I", "A", "U", "V");
    VyrCourbe* xyVolts = doc.CreateCourbe(e, p, nullptr, false);
    p = Param("I", "A", "T", "K");
    VyrCourbe* xyKelvin = doc.CreateCourbe(e, p, nullptr, false);
    p = Param("I", "A", "P", "Pa");
    VyrCourbe* xyPascal = doc.CreateCourbe(e, p, nullptr, false);
    p = Param("U", "V", "t", "s");
    VyrCourbe* plain = doc.CreateCourbe(e, p, nullptr, false);
    p = Param("W", "V", "T", "K");
    VyrCourbe* plainKelvin = doc.CreateCourbe(e, p, nullptr, false);
    xyVolts->SetXYDisplay(1);
    xyKelvin->SetXYDisplay(1);
    xyPascal->SetXYDisplay(1);
    VyrDiagramTestAccess::SetUx(doc.GetDiagram(0), "V");
    VyrDiagramTestAccess::SetUx(doc.GetDiagram(1), "Pa");
    RecordingObserver obs;
    doc.AddObserver(&obs);
    const int kelvinOid = xyKelvin->GetOid();
    doc.RemoveCourbesXYInutiles();
    EXPECT_EQ(doc.FindCourbeByOid(kelvinOid), nullptr);
    EXPECT_EQ(doc.FindCourbeByOid(xyVolts->GetOid()), xyVolts);
    EXPECT_EQ(doc.FindCourbeByOid(xyPascal->GetOid()), xyPascal);
    EXPECT_EQ(doc.FindCourbeByOid(plain->GetOid()), plain);
    EXPECT_EQ(doc.FindCourbeByOid(plainKelvin->GetOid()), plainKelvin);
    EXPECT_EQ(e->GetNbCourbe(), 4);
    ASSERT_EQ(obs.messages.size(), 1u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_CURVE_DELETED);
    EXPECT_EQ(obs.messages[0].param, xyKelvin);
    // 1 experiment + 4 curves with 2 vectors each remain.
    EXPECT_EQ(doc.GetEntityList().GetCount(), 13u);
}

TEST(VyrBaseDataXYCurves, OtherMarkerValuesAreNotXYCurves) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbeParam p = Param("I", "A", "U", "V");
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    c->SetXYDisplay(2);
    doc.RemoveCourbesXYInutiles();
    EXPECT_EQ(doc.FindCourbeByOid(c->GetOid()), c);
    c->SetXYDisplay(1);
    const int oid = c->GetOid();
    doc.RemoveCourbesXYInutiles();
    EXPECT_EQ(doc.FindCourbeByOid(oid), nullptr);
}
