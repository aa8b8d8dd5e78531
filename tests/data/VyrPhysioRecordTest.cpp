#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrRespihomConfigEntity.h"
#include "vyrbase/data/VyrRespihomDataEntity.h"
#include "vyrbase/data/VyrSpiroExpEntity.h"
#include "vyrbase/data/VyrSpiroMetaConfigEntity.h"
#include "vyrbase/data/VyrSpiroMetaDataEntity.h"
#include "vyrbase/data/VyrSpirogEntity.h"
#include "vyrbase/data/VyrSpiromEntity.h"

namespace {

std::unique_ptr<VyrPhysioRecord> Make(int kind, int oid) {
    switch (kind) {
        case VYR_KIND_SPIROG:
            return std::make_unique<VyrSpirogEntity>(oid, nullptr);
        case VYR_KIND_RESPIHOM_CONFIG:
            return std::make_unique<VyrRespihomConfigEntity>(oid, nullptr);
        case VYR_KIND_RESPIHOM_DATA:
            return std::make_unique<VyrRespihomDataEntity>(oid, nullptr);
        case VYR_KIND_SPIROM:
            return std::make_unique<VyrSpiromEntity>(oid, nullptr);
        case VYR_KIND_SPIRO_META_CONFIG:
            return std::make_unique<VyrSpiroMetaConfigEntity>(oid, nullptr);
        case VYR_KIND_SPIRO_META_DATA:
            return std::make_unique<VyrSpiroMetaDataEntity>(oid, nullptr);
        case VYR_KIND_SPIRO_EXP:
            return std::make_unique<VyrSpiroExpEntity>(oid, nullptr);
    }
    return nullptr;
}

std::string Keys(const VyrPhysioRecord& r) {
    std::string keys;
    for (int i = 0; i < r.GetFieldCount(); ++i) {
        if (i)
            keys += ' ';
        keys += wxString(r.GetField(i).key).ToStdString();
        keys += ':';
        keys += "gdsn"[r.GetField(i).format];
    }
    return keys;
}

const char* const kSpirogKeys = "exp:s vc:g vri:g vre:g vi:g ve:g tps:g vvp:g vvt:g fr:g dm:g";

// Fills every value of a record with something that differs from its defaults.
void FillDistinct(VyrPhysioRecord& r, int salt) {
    for (int i = 0; i < r.GetFieldCount(); ++i) {
        switch (r.GetField(i).format) {
            case VYR_PHYSIO_REAL:
                EXPECT_TRUE(r.SetRealAt(i, salt + i + 0.25));
                break;
            case VYR_PHYSIO_INT:
                EXPECT_TRUE(r.SetIntAt(i, salt * 100 + i));
                break;
            case VYR_PHYSIO_TEXT:
            case VYR_PHYSIO_NAME:
                EXPECT_TRUE(r.SetTextAt(i, wxString::Format("t%d_%d", salt, i)));
                break;
        }
    }
}

void ExpectSameValues(const VyrPhysioRecord& a, const VyrPhysioRecord& b) {
    ASSERT_EQ(a.GetFieldCount(), b.GetFieldCount());
    for (int i = 0; i < a.GetFieldCount(); ++i) {
        EXPECT_EQ(a.GetRealAt(i), b.GetRealAt(i)) << i;
        EXPECT_EQ(a.GetIntAt(i), b.GetIntAt(i)) << i;
        EXPECT_EQ(a.GetTextAt(i), b.GetTextAt(i)) << i;
    }
}

}  // namespace

TEST(VyrPhysioRecord, EachKindHoldsTheKeysOfItsSectionInWrittenOrder) {
    EXPECT_EQ(Keys(*Make(VYR_KIND_SPIROG, 1)), kSpirogKeys);
    EXPECT_EQ(Keys(*Make(VYR_KIND_SPIRO_EXP, 1)), kSpirogKeys);
    EXPECT_EQ(Keys(*Make(VYR_KIND_SPIROM, 1)),
              std::string(kSpirogKeys) +
                  " spvr:g spvt:g spvm:g spvins:g spvexp:g spacq:d spage:g sptaille:g"
                  " spgarcon:d spresinsp:g spvcourant:g spresexp:g");
    EXPECT_EQ(Keys(*Make(VYR_KIND_RESPIHOM_CONFIG, 1)), "name:n oiddataselected:d");
    EXPECT_EQ(Keys(*Make(VYR_KIND_SPIRO_META_CONFIG, 1)), "name:n oiddataselected:d");
    EXPECT_EQ(Keys(*Make(VYR_KIND_RESPIHOM_DATA, 1)),
              "name:n type:d irmoy:s qr:s puissance:s metabolisme:s");
    EXPECT_EQ(Keys(*Make(VYR_KIND_SPIRO_META_DATA, 1)),
              "name:n type:d irmoy:s puissance:s metab:s");
}

TEST(VyrPhysioRecord, KindsAreEightToFourteen) {
    for (int kind = VYR_KIND_SPIROG; kind <= VYR_KIND_SPIRO_EXP; ++kind) {
        EXPECT_EQ(Make(kind, 3)->GetKind(), kind);
        EXPECT_NE(VyrPhysioRecord::GetKindTable(kind), nullptr);
    }
    EXPECT_EQ(VyrPhysioRecord::GetKindTable(VYR_KIND_GRILLE), nullptr);
    EXPECT_EQ(VyrPhysioRecord::GetKindTable(VYR_KIND_IMAGE), nullptr);
    EXPECT_EQ(VyrPhysioRecord::GetKindTable(0), nullptr);
}

TEST(VyrPhysioRecord, ConstructedDefaults) {
    for (int kind = VYR_KIND_SPIROG; kind <= VYR_KIND_SPIRO_EXP; ++kind) {
        auto r = Make(kind, 5);
        EXPECT_EQ(r->GetOid(), 5);
        for (int i = 0; i < r->GetFieldCount(); ++i) {
            EXPECT_EQ(r->GetRealAt(i), 0.0);
            EXPECT_TRUE(r->GetTextAt(i).empty());
        }
    }
    EXPECT_EQ(Make(VYR_KIND_RESPIHOM_CONFIG, 1)->GetInt("oiddataselected"), -1);
    EXPECT_EQ(Make(VYR_KIND_SPIRO_META_CONFIG, 1)->GetInt("oiddataselected"), -1);
    EXPECT_EQ(Make(VYR_KIND_RESPIHOM_DATA, 1)->GetInt("type"), 0);
    EXPECT_EQ(Make(VYR_KIND_SPIRO_META_DATA, 1)->GetInt("type"), 0);
    VyrSpiromEntity spirom(1, nullptr);
    EXPECT_EQ(spirom.GetInt("spacq"), 0);
    EXPECT_EQ(spirom.GetInt("spgarcon"), 1);
    EXPECT_FALSE(spirom.GetExtraFlag());
}

TEST(VyrPhysioRecord, NameFieldIsTheEntityName) {
    VyrRespihomDataEntity r(4, nullptr);
    EXPECT_TRUE(r.SetText("name", "Seance 1"));
    EXPECT_EQ(r.GetEntityName(), "Seance 1");
    r.SetEntityName(L"Autre");
    EXPECT_EQ(r.GetText("name"), "Autre");
}

TEST(VyrPhysioRecord, UnknownKeyOrWrongFormatReadsZeroAndIsNotWritten) {
    VyrSpirogEntity r(1, nullptr);
    EXPECT_FALSE(r.SetReal("nope", 2.0));
    EXPECT_FALSE(r.SetInt("vc", 2));
    EXPECT_FALSE(r.SetText("vc", "x"));
    EXPECT_FALSE(r.SetReal("exp", 1.0));
    EXPECT_EQ(r.GetReal("nope"), 0.0);
    EXPECT_EQ(r.GetInt("vc"), 0);
    EXPECT_EQ(r.GetReal("vc"), 0.0);
    EXPECT_EQ(r.FindField("VC"), -1);
    EXPECT_EQ(r.GetRealAt(-1), 0.0);
    EXPECT_EQ(r.GetRealAt(99), 0.0);
    EXPECT_FALSE(r.SetRealAt(99, 1.0));
    EXPECT_TRUE(r.SetReal("vc", 3.5));
    EXPECT_EQ(r.GetReal("vc"), 3.5);
}

TEST(VyrPhysioRecord, CopyConstructionAndAssignmentCopyEveryValue) {
    for (int kind = VYR_KIND_SPIROG; kind <= VYR_KIND_SPIRO_EXP; ++kind) {
        auto source = Make(kind, 7);
        FillDistinct(*source, kind);
        auto target = Make(kind, 9);
        switch (kind) {
            case VYR_KIND_SPIROM: {
                auto& s = static_cast<VyrSpiromEntity&>(*source);
                s.SetExtraFlag(true);
                VyrSpiromEntity copy(s);
                ExpectSameValues(copy, s);
                EXPECT_TRUE(copy.GetExtraFlag());
                auto& t = static_cast<VyrSpiromEntity&>(*target);
                t = s;
                EXPECT_TRUE(t.GetExtraFlag());
                break;
            }
            case VYR_KIND_RESPIHOM_DATA: {
                auto& s = static_cast<VyrRespihomDataEntity&>(*source);
                VyrRespihomDataEntity copy(s);
                ExpectSameValues(copy, s);
                static_cast<VyrRespihomDataEntity&>(*target) = s;
                break;
            }
            default: {
                // The other five go through the shared base, which is what their own copies
                // use.
                VyrPhysioRecord& t = *target;
                t = *source;
                break;
            }
        }
        ExpectSameValues(*target, *source);
        EXPECT_EQ(target->GetOid(), 7);
        EXPECT_EQ(target->GetEntityName(), source->GetEntityName());
    }
}

TEST(VyrPhysioRecord, CopiesAreIndependent) {
    VyrSpiroExpEntity a(1, nullptr);
    a.SetReal("fr", 12.0);
    a.SetText("exp", "souffle");
    VyrSpiroExpEntity b(a);
    b.SetReal("fr", 13.0);
    b.SetText("exp", "autre");
    EXPECT_EQ(a.GetReal("fr"), 12.0);
    EXPECT_EQ(a.GetText("exp"), "souffle");
}

TEST(VyrPhysioRecord, DocumentCreatesEachKindWithItsTable) {
    VyrBaseData doc(nullptr);
    VyrSpiromEntity* s = doc.GetSpiromEntity(true, L"m");
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->GetInt("spgarcon"), 1);
    EXPECT_EQ(s->GetEntityName(), "m");
    VyrSpiroMetaConfigEntity* c = doc.GetSpiroMetaConfigEntity(true, nullptr);
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->GetInt("oiddataselected"), -1);
}
