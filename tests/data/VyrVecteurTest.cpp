#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>
#include <cstdio>
#include <initializer_list>
#include <limits>

#include <sys/resource.h>
#include <unistd.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserver.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// Lowers the address-space limit to the current use plus `extra` bytes while it lives.
class AddressSpaceLimit {
public:
    explicit AddressSpaceLimit(long extra) {
        long pages = 0;
        FILE* f = std::fopen("/proc/self/statm", "r");
        if (!f)
            return;
        if (std::fscanf(f, "%ld", &pages) != 1)
            pages = 0;
        std::fclose(f);
        if (pages <= 0 || getrlimit(RLIMIT_AS, &m_old) != 0)
            return;
        rlimit lower = m_old;
        lower.rlim_cur = static_cast<rlim_t>(pages) * sysconf(_SC_PAGESIZE) + extra;
        m_active = setrlimit(RLIMIT_AS, &lower) == 0;
    }
    ~AddressSpaceLimit() {
        if (m_active)
            setrlimit(RLIMIT_AS, &m_old);
    }
    bool IsActive() const { return m_active; }

private:
    rlimit m_old{};
    bool m_active = false;
};

VyrVecteur Make(std::initializer_list<double> values) {
    VyrVecteur v(1, nullptr);
    v.Resize(static_cast<int>(values.size()));
    int i = 0;
    for (double d : values)
        v.SetVal(i++, d);
    return v;
}
}  // namespace

TEST(VyrVecteur, ConstructedEmpty) {
    VyrVecteur v(7, nullptr);
    EXPECT_EQ(v.GetKind(), 3);
    EXPECT_EQ(v.GetOid(), 7);
    EXPECT_EQ(v.GetSize(), 0);
    EXPECT_EQ(v.GetCapacity(), 0);
    EXPECT_EQ(v.GetArea(), nullptr);
    EXPECT_EQ(v.GetValidity()->GetSize(), 0);
    EXPECT_TRUE(v.GetGrandeur().empty());
    EXPECT_TRUE(v.GetUnite().empty());
}

TEST(VyrVecteur, ResizeFiveOnEmptyGivesCapacity105AllValidZero) {
    VyrVecteur v(1, nullptr);
    v.Resize(5);
    EXPECT_EQ(v.GetSize(), 5);
    EXPECT_EQ(v.GetCapacity(), 105);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(v.IsValidAt(i));
        EXPECT_EQ(v.GetVal(i), 0.0);
    }
}

TEST(VyrVecteur, ResizeWithinCapacityKeepsStorage) {
    VyrVecteur v(1, nullptr);
    v.Resize(5);
    double* area = v.GetArea();
    v.SetVal(4, 4.5);
    v.Resize(105);
    EXPECT_EQ(v.GetArea(), area);
    EXPECT_EQ(v.GetCapacity(), 105);
    v.Resize(106);
    EXPECT_NE(v.GetArea(), nullptr);
    EXPECT_EQ(v.GetCapacity(), 206);
    EXPECT_EQ(v.GetVal(4), 4.5);
    EXPECT_EQ(v.GetVal(105), 0.0);
    v.Resize(2);
    EXPECT_EQ(v.GetSize(), 2);
    EXPECT_EQ(v.GetCapacity(), 206);
    EXPECT_EQ(v.GetValidity()->GetSize(), 106 / 8 + 1);
}

TEST(VyrVecteur, CapacityFollowsTheSlackWhileAppendingPointByPoint) {
    VyrVecteur v(1, nullptr);
    for (int n = 1; n <= 5000; ++n) {
        v.Resize(n);
        v.SetVal(n - 1, n);
        // Grown only when the size passes the capacity, and then to size + 100: 101, 202, ...
        ASSERT_EQ(v.GetCapacity(), ((n + 100) / 101) * 101) << n;
    }
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(v.GetVal(i), i + 1.0);
    // Shrinking keeps the values up to the capacity; growing past it zeroes the new slots.
    ASSERT_EQ(v.GetCapacity(), 5050);
    v.Resize(10);
    v.Resize(5050);
    EXPECT_EQ(v.GetVal(4999), 5000.0);
    EXPECT_EQ(v.GetVal(5000), 0.0);
    v.Resize(5051);
    EXPECT_EQ(v.GetCapacity(), 5151);
    for (int i = 5000; i < 5051; ++i)
        ASSERT_EQ(v.GetVal(i), 0.0);
}

TEST(VyrVecteur, ResizeRefusesNegativeAndHugeSizes) {
    VyrVecteur v = Make({1, 2});
    v.Resize(-1);
    EXPECT_EQ(v.GetSize(), 2);
    v.Resize(std::numeric_limits<int>::max());
    EXPECT_EQ(v.GetSize(), 2);
    EXPECT_EQ(v.GetVal(1), 2.0);
}

TEST(VyrVecteur, RemoveLastThenResizeShowsPointFourInvalid) {
    VyrVecteur v = Make({0, 1, 2, 3, 4});
    v.RemoveValAt(4);
    EXPECT_EQ(v.GetSize(), 4);
    v.Resize(5);
    EXPECT_FALSE(v.IsValidAt(4));
}

TEST(VyrVecteur, RazKeepsInvalidMarksThatReappearOnGrowth) {
    VyrVecteur v = Make({0, 1, 2});
    v.ValidateAt(2, false);
    v.Raz();
    EXPECT_EQ(v.GetSize(), 0);
    EXPECT_EQ(v.GetCapacity(), 0);
    EXPECT_EQ(v.GetArea(), nullptr);
    v.Resize(3);
    EXPECT_FALSE(v.IsValidAt(2));
    EXPECT_TRUE(v.IsValidAt(1));
    EXPECT_EQ(v.GetVal(2), 0.0);
}

TEST(VyrVecteur, MinAndMaxIncludeInvalidPoints) {
    VyrVecteur v = Make({3, -10, 5});
    v.ValidateAt(1, false);
    EXPECT_EQ(v.GetMin(), -10.0);
    EXPECT_EQ(v.GetMax(), 5.0);
    VyrVecteur empty(2, nullptr);
    EXPECT_EQ(empty.GetMin(), 0.0);
    EXPECT_EQ(empty.GetMax(), 0.0);
}

TEST(VyrVecteur, FindIndexSkipsInvalidPoints) {
    VyrVecteur v = Make({1, 3, 4, 6});
    v.ValidateAt(1, false);
    EXPECT_EQ(v.FindIndex(4.0, 0), 2);
    EXPECT_EQ(v.FindIndex(0.5, 0), -1);
    EXPECT_EQ(v.FindIndex(3.5, 0), 0);  // 3 is invalid: 1 is the last valid point at or below
    EXPECT_EQ(v.FindIndex(100.0, 0), 3);
    EXPECT_EQ(v.FindIndex(5.0, 3), -1);  // starts at 6 > 5
    EXPECT_EQ(v.FindIndex(5.0, 4), -1);  // start not below size
    EXPECT_EQ(v.FindIndex(4.0, -7), 2);  // negative starts are skipped up to 0
}

TEST(VyrVecteur, FindIndexStopsAtFirstValidGreaterValue) {
    // Unsorted data: the scan stops at 5 even though 2 follows.
    VyrVecteur v = Make({1, 5, 2});
    EXPECT_EQ(v.FindIndex(3.0, 0), 0);
}

TEST(VyrVecteur, GetSortPositionCountsInvalidPoints) {
    VyrVecteur v = Make({1, 3, 4, 6});
    int p = -1;
    EXPECT_TRUE(v.GetSortPosition(4.0, &p));
    EXPECT_EQ(p, 2);
    EXPECT_FALSE(v.GetSortPosition(3.5, &p));
    EXPECT_EQ(p, 2);
    EXPECT_FALSE(v.GetSortPosition(7.0, &p));
    EXPECT_EQ(p, 4);
    v.ValidateAt(1, false);
    EXPECT_TRUE(v.GetSortPosition(3.0, &p));
    EXPECT_EQ(p, 1);
    VyrVecteur empty(1, nullptr);
    p = -1;
    EXPECT_FALSE(empty.GetSortPosition(1.0, &p));
    EXPECT_EQ(p, 0);
    EXPECT_FALSE(v.GetSortPosition(1.0, nullptr) && false);
}

TEST(VyrVecteur, SetGrandeurStripsBracketsForTable) {
    VyrVecteur v(1, nullptr);
    v.SetGrandeur("[U1]");
    EXPECT_EQ(v.GetGrandeur(), "[U1]");
    EXPECT_EQ(v.GetGrandeurForTable(), "U1");
    v.SetGrandeur("a[b]c]d[");
    EXPECT_EQ(v.GetGrandeurForTable(), "abcd");
    v.SetUnite("[V]");
    EXPECT_EQ(v.GetUnite(), "[V]");
}

TEST(VyrVecteur, IsEqualIgnoresQuantityAndValidity) {
    VyrVecteur a = Make({1, 2, 3});
    VyrVecteur b = Make({1, 2, 3});
    a.SetGrandeur("U");
    b.SetGrandeur("I");
    a.SetUnite("V");
    b.SetUnite("V");
    b.ValidateAt(1, false);
    EXPECT_TRUE(a.IsEqual(&b));
    b.SetUnite("v");
    EXPECT_FALSE(a.IsEqual(&b));
    b.SetUnite("V");
    b.SetVal(2, 3.0000001);
    EXPECT_FALSE(a.IsEqual(&b));
    VyrVecteur c = Make({1, 2});
    c.SetUnite("V");
    EXPECT_FALSE(a.IsEqual(&c));
    EXPECT_FALSE(a.IsEqual(nullptr));
}

TEST(VyrVecteur, OutOfRangeWriteLandsOnPointZero) {
    VyrVecteur v = Make({1, 2, 3});
    v[7] = 42.0;
    EXPECT_EQ(v.GetVal(0), 42.0);
    v[-1] = 43.0;
    EXPECT_EQ(v.GetVal(0), 43.0);
    EXPECT_EQ(v.GetSize(), 3);
    v[2] = 9.0;
    EXPECT_EQ(v.GetVal(2), 9.0);
}

TEST(VyrVecteur, IndexingWithoutStorageUsesADummySlot) {
    VyrVecteur v(1, nullptr);
    v[0] = 5.0;
    v[3] = 6.0;
    EXPECT_EQ(v.GetSize(), 0);
    EXPECT_EQ(v.GetArea(), nullptr);
    EXPECT_EQ(v.GetVal(0), 0.0);
    const VyrVecteur& cv = v;
    EXPECT_EQ(cv[0], 0.0);
}

TEST(VyrVecteur, ConstReadsAndSetValIgnoreOutOfRange) {
    VyrVecteur v = Make({1, 2});
    const VyrVecteur& cv = v;
    EXPECT_EQ(cv[-1], 0.0);
    EXPECT_EQ(cv[2], 0.0);
    v.SetVal(2, 5.0);
    v.SetVal(-1, 5.0);
    EXPECT_EQ(v.GetVal(0), 1.0);
    EXPECT_EQ(v.GetVal(1), 2.0);
    VyrVecteur empty(1, nullptr);
    empty.SetVal(0, 1.0);
    EXPECT_EQ(empty.GetVal(0), 0.0);
}

TEST(VyrVecteur, PreAllocDropsOldValuesAndKeepsSize) {
    VyrVecteur v = Make({1, 2, 3});
    ASSERT_EQ(v.GetCapacity(), 103);
    v.PreAlloc(50);  // not above the capacity: nothing
    EXPECT_EQ(v.GetVal(1), 2.0);
    v.PreAlloc(500);
    EXPECT_EQ(v.GetCapacity(), 500);
    EXPECT_EQ(v.GetSize(), 3);
    EXPECT_EQ(v.GetVal(1), 0.0);  // old values are lost
    v.Resize(500);
    EXPECT_EQ(v.GetCapacity(), 500);  // exactly what was asked, no slack
}

// The advice flags ("VmFlags") of the mapping that holds `address`, from /proc/self/smaps;
// empty when no mapping holds it.
std::string MappingFlagsOf(const void* address) {
    const uintptr_t a = reinterpret_cast<uintptr_t>(address);
    FILE* f = std::fopen("/proc/self/smaps", "r");
    if (!f)
        return std::string();
    char line[512];
    bool inside = false;
    std::string flags;
    while (std::fgets(line, sizeof line, f)) {
        unsigned long long start = 0, end = 0;
        // A mapping's line starts "start-end perms ..."; its fields' lines "Name: value".
        if (std::sscanf(line, "%llx-%llx ", &start, &end) == 2) {
            inside = a >= start && a < end;
        } else if (inside && std::strncmp(line, "VmFlags:", 8) == 0) {
            flags = line + 8;
            break;
        }
    }
    std::fclose(f);
    return flags;
}

// The advice flags of the mapping that holds the first whole large page of `storage`, where
// the advice for large pages applies.
std::string LargePageFlagsOf(const double* storage) {
    const uintptr_t huge = uintptr_t(2) << 20;
    const uintptr_t inside = (reinterpret_cast<uintptr_t>(storage) + huge - 1) & ~(huge - 1);
    return MappingFlagsOf(reinterpret_cast<const void*>(inside));
}

// Whether the space-separated `flags` hold `flag`.
bool HasFlag(const std::string& flags, const std::string& flag) {
    std::istringstream words(flags);
    std::string word;
    while (words >> word)
        if (word == flag)
            return true;
    return false;
}

TEST(VyrVecteur, LargePreAllocationAsksForLargePages) {
    if (access("/sys/kernel/mm/transparent_hugepage/enabled", F_OK) != 0)
        GTEST_SKIP() << "this system has no large pages to ask for";
    const int n = 4 << 20;  // 32 MiB of storage, made at once for a table about to be read
    VyrVecteur made(2, nullptr);
    made.PreAlloc(n);
    ASSERT_NE(made.GetArea(), nullptr);
    const std::string madeFlags = LargePageFlagsOf(made.GetArea());
    ASSERT_FALSE(madeFlags.empty());
    EXPECT_TRUE(HasFlag(madeFlags, "hg")) << madeFlags;

    // Storage grown through Resize is reallocated as it grows: no advice there.
    VyrVecteur grown(2, nullptr);
    grown.Resize(n);
    const std::string grownFlags = LargePageFlagsOf(grown.GetArea());
    ASSERT_FALSE(grownFlags.empty());
    EXPECT_FALSE(HasFlag(grownFlags, "hg")) << grownFlags;
}

TEST(VyrVecteur, FailedAllocationLeavesVectorUnchanged) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer reserves the address space this test limits";
#else
    VyrVecteur v = Make({1, 2});
    VyrBitMask mask;
    double* area = v.GetArea();
    // Limit the address space to what is in use plus 64 MiB, so that 16 GiB cannot be had.
    AddressSpaceLimit limit(64L << 20);
    ASSERT_TRUE(limit.IsActive());
    v.PreAlloc(std::numeric_limits<int>::max());
    v.Resize(std::numeric_limits<int>::max() - 100);
    mask.SetSize(std::numeric_limits<int>::max() - 1);
    VyrVecteur big(2, nullptr);
    big.Resize(1 << 24);  // 128 MiB
    EXPECT_EQ(big.GetSize(), 0);
    EXPECT_EQ(big.GetArea(), nullptr);
    EXPECT_EQ(mask.GetSize(), 0);
    EXPECT_EQ(v.GetArea(), area);
    EXPECT_EQ(v.GetSize(), 2);
    EXPECT_EQ(v.GetCapacity(), 102);
    EXPECT_EQ(v.GetVal(1), 2.0);
#endif
}

TEST(VyrVecteur, InsertValShiftsValuesAndMarksUpDroppingTheLast) {
    VyrVecteur v = Make({10, 20, 30, 40});
    v.ValidateAt(1, false);
    v.InsertVal(1, 15);
    EXPECT_EQ(v.GetSize(), 4);
    EXPECT_EQ(v.GetVal(0), 10.0);
    EXPECT_EQ(v.GetVal(1), 15.0);
    EXPECT_EQ(v.GetVal(2), 20.0);
    EXPECT_EQ(v.GetVal(3), 30.0);
    EXPECT_FALSE(v.IsValidAt(1));  // the bit at the insertion index keeps its old state
    EXPECT_FALSE(v.IsValidAt(2));  // the moved point keeps its mark
    EXPECT_TRUE(v.IsValidAt(3));
    v.InsertVal(4, 1.0);  // out of range: nothing
    v.InsertVal(-1, 1.0);
    EXPECT_EQ(v.GetVal(3), 30.0);
}

TEST(VyrVecteur, RemoveValAtShiftsDownAndMarksVacatedLastInvalid) {
    VyrVecteur v = Make({10, 20, 30, 40});
    v.ValidateAt(2, false);
    v.RemoveValAt(0);
    EXPECT_EQ(v.GetSize(), 3);
    EXPECT_EQ(v.GetVal(0), 20.0);
    EXPECT_EQ(v.GetVal(1), 30.0);
    EXPECT_EQ(v.GetVal(2), 40.0);
    EXPECT_TRUE(v.IsValidAt(0));
    EXPECT_FALSE(v.IsValidAt(1));
    EXPECT_TRUE(v.IsValidAt(2));
    EXPECT_FALSE(v.GetValidity()->IsSet(3));
    v.RemoveValAt(3);
    v.RemoveValAt(-1);
    EXPECT_EQ(v.GetSize(), 3);
}

TEST(VyrVecteur, ValidateAtAndIsValidAtHonourRange) {
    VyrVecteur v = Make({1, 2});
    v.ValidateAt(5, false);
    EXPECT_TRUE(v.GetValidity()->IsSet(5));
    EXPECT_FALSE(v.IsValidAt(5));
    EXPECT_FALSE(v.IsValidAt(-1));
    v.ValidateAt(1, false);
    EXPECT_FALSE(v.IsValidAt(1));
    v.ValidateAt(1, true);
    EXPECT_TRUE(v.IsValidAt(1));
}

TEST(VyrVecteur, CopyConstructionSharesStorage) {
    auto* source = new VyrVecteur(5, nullptr);
    source->SetEntityName(L"vx");
    source->SetGrandeur("[t]");
    source->SetUnite("s");
    source->Resize(3);
    source->SetVal(1, 2.5);
    source->ValidateAt(2, false);
    auto* copy = new VyrVecteur(*source);
    EXPECT_EQ(copy->GetArea(), source->GetArea());
    EXPECT_EQ(copy->GetSize(), 3);
    EXPECT_EQ(copy->GetCapacity(), 103);
    EXPECT_EQ(copy->GetOid(), 5);
    EXPECT_EQ(copy->GetEntityName(), "vx");
    EXPECT_EQ(copy->GetGrandeurForTable(), "t");
    EXPECT_EQ(copy->GetUnite(), "s");
    EXPECT_FALSE(copy->IsValidAt(2));
    // The mask is copied, not shared.
    copy->ValidateAt(2, true);
    EXPECT_FALSE(source->IsValidAt(2));
    source->SetVal(1, 7.0);
    EXPECT_EQ(copy->GetVal(1), 7.0);
    delete source;
    // The storage went with the source: destroying the copy would free it a second time, so
    // the copy is deliberately never destroyed. Kept reachable, so that no leak checker
    // (the leak sanitizer, valgrind) reports it.
    static VyrVecteur* const kNeverDestroyed = copy;
    (void)kNeverDestroyed;
}

TEST(VyrVecteur, AssignmentIsDeepAndKeepsIdentity) {
    VyrVecteur source = Make({1, 2, 3});
    source.SetGrandeur("[U]");
    source.SetUnite("V");
    source.ValidateAt(1, false);
    VyrVecteur target(9, nullptr);
    target.SetEntityName(L"target");
    target.Resize(300);
    target = source;
    EXPECT_EQ(target.GetOid(), 9);
    EXPECT_EQ(target.GetEntityName(), "target");
    EXPECT_NE(target.GetArea(), source.GetArea());
    EXPECT_EQ(target.GetSize(), 3);
    EXPECT_EQ(target.GetCapacity(), 103);
    EXPECT_EQ(target.GetGrandeur(), "[U]");
    EXPECT_EQ(target.GetGrandeurForTable(), "U");
    EXPECT_EQ(target.GetUnite(), "V");
    EXPECT_EQ(target.GetVal(2), 3.0);
    EXPECT_FALSE(target.IsValidAt(1));
    EXPECT_EQ(target.GetValidity()->GetSize(), source.GetValidity()->GetSize());
    source.SetVal(2, 8.0);
    EXPECT_EQ(target.GetVal(2), 3.0);
    target = target;
    EXPECT_EQ(target.GetVal(2), 3.0);
    VyrVecteur empty(3, nullptr);
    target = empty;
    EXPECT_EQ(target.GetSize(), 0);
    EXPECT_EQ(target.GetArea(), nullptr);
}

TEST(VyrVecteur, MergeValidValuesWithoutDuplicatesThenSort) {
    VyrVecteur v = Make({3, 1, 3, 2, 9});
    v.ValidateAt(4, false);
    wxArrayDouble out;
    out.Add(2.0);
    VyrVecteur::MergeVectors(&v, out, false);
    ASSERT_EQ(out.GetCount(), 3u);
    EXPECT_EQ(out[0], 2.0);
    EXPECT_EQ(out[1], 3.0);
    EXPECT_EQ(out[2], 1.0);
    VyrVecteur::MergeVectors(&v, out, true);
    ASSERT_EQ(out.GetCount(), 3u);
    EXPECT_EQ(out[0], 1.0);
    EXPECT_EQ(out[2], 3.0);
    VyrVecteur::MergeVectors(nullptr, out, true);
    EXPECT_EQ(out.GetCount(), 3u);
}

TEST(VyrVecteur, MergeTwoVectorsIgnoresValidityAndSorts) {
    VyrVecteur a = Make({5, 1, 5});
    VyrVecteur b = Make({4, 1, 0});
    a.ValidateAt(0, false);
    wxArrayDouble out;
    VyrVecteur::MergeVectors(&a, &b, out);
    ASSERT_EQ(out.GetCount(), 4u);
    EXPECT_EQ(out[0], 0.0);
    EXPECT_EQ(out[1], 1.0);
    EXPECT_EQ(out[2], 4.0);
    EXPECT_EQ(out[3], 5.0);
    wxArrayDouble other;
    VyrVecteur::MergeVectors(nullptr, &b, other);
    EXPECT_EQ(other.GetCount(), 3u);
}

TEST(VyrVecteur, NanValuesDoNotBreakMergeOrSearch) {
    const double nan = std::nan("");
    VyrVecteur v = Make({2, nan, 1, nan});
    wxArrayDouble out;
    VyrVecteur::MergeVectors(&v, out, true);
    ASSERT_EQ(out.GetCount(), 4u);  // NaN never equals itself: each one is new
    EXPECT_EQ(out[0], 1.0);
    EXPECT_EQ(out[1], 2.0);
    EXPECT_TRUE(std::isnan(out[2]));
    int p = -1;
    EXPECT_FALSE(v.GetSortPosition(nan, &p));
    EXPECT_EQ(p, 0);
    EXPECT_EQ(v.FindIndex(nan, 0), 3);
    EXPECT_FALSE(v.IsEqual(&v));
}

// The extremes are those of std::min_element / std::max_element bit for bit, whatever the
// values (GetMinMax gives both): NaN first or later, zeros of both signs, infinities, repeated
// values, any length.
TEST(VyrVecteur, MinAndMaxAreThoseOfTheFirstExtremeElementBitForBit) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const double pool[] = {0.0, -0.0, 1.0, -1.0, 2.5, -2.5, nan, inf, -inf, 1e-310, 7.0};
    std::mt19937 random(42);
    auto bits = [](double d) {
        uint64_t b;
        std::memcpy(&b, &d, sizeof b);
        return b;
    };
    for (int round = 0; round < 20000; ++round) {
        const int n = 1 + static_cast<int>(random() % 70);
        VyrVecteur v(1, nullptr);
        v.Resize(n);
        for (int i = 0; i < n; ++i)
            v.SetVal(i, pool[random() % (sizeof pool / sizeof pool[0])]);
        const double* a = v.GetArea();
        ASSERT_EQ(bits(*std::min_element(a, a + n)), bits(v.GetMin())) << "round " << round;
        ASSERT_EQ(bits(*std::max_element(a, a + n)), bits(v.GetMax())) << "round " << round;
        double lo = 1, hi = 1;
        v.GetMinMax(lo, hi);
        ASSERT_EQ(bits(v.GetMin()), bits(lo));
        ASSERT_EQ(bits(v.GetMax()), bits(hi));
    }
}

namespace {

// Reads the extremes of every vector of its document at each notification, as the diagrams do.
class ExtremesReader : public VyrObserver {
public:
    explicit ExtremesReader(VyrBaseData& doc) : m_doc(doc) {}
    void OnUpdateObserver(VyrObserverMsg&) override {
        for (auto* node = m_doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
            if (node->GetData()->GetKind() != VYR_KIND_VECTEUR)
                continue;
            const VyrVecteur* v = static_cast<const VyrVecteur*>(node->GetData());
            const double* a = v->GetArea();
            if (!a || v->GetSize() < 1)
                continue;
            ++reads;
            if (v->GetMin() != *std::min_element(a, a + v->GetSize()) ||
                v->GetMax() != *std::max_element(a, a + v->GetSize()))
                ++wrong;
        }
    }
    void OnInitialUpdateObserver() override {}
    int reads = 0;
    int wrong = 0;

private:
    VyrBaseData& m_doc;
};

}  // namespace

// While Delete empties the document, each vector's extremes are found once and then kept (the
// diagrams ask for them at each curve deleted); they stay those of the values, and after Delete
// every change of the values shows again.
TEST(VyrVecteur, ExtremesKeptWhileTheDocumentEmptiesAreThoseOfTheValues) {
    VyrBaseData doc(nullptr);
    VyrExperienceParam ep(L"E");
    VyrExperience* e = doc.CreateExperience(ep);
    std::vector<VyrVecteur*> vectors;
    for (int k = 0; k < 5; ++k) {
        VyrCourbeParam p;
        p.m_sGrdX = L"t";
        p.m_sGrdY = wxString::Format(L"U%d", k);
        VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
        c->SetSize(50);
        for (int i = 0; i < 50; ++i) {
            c->GetVx()->SetVal(i, i + k);
            c->GetVy()->SetVal(i, (i * 7 + k) % 13 - 6.0);
        }
    }
    ExtremesReader reader(doc);
    doc.AddObserver(&reader);
    EXPECT_FALSE(doc.IsEmptying());
    doc.Delete();
    EXPECT_FALSE(doc.IsEmptying());
    EXPECT_GT(reader.reads, 0);
    EXPECT_EQ(0, reader.wrong);
    doc.RemoveObserver(&reader);

    // Outside Delete nothing is kept: a vector whose values change answers the new extremes.
    VyrVecteur v(1, &doc);
    v.Resize(3);
    v.SetVal(0, 1.0);
    EXPECT_EQ(1.0, v.GetMax());
    v.SetVal(1, 5.0);
    EXPECT_EQ(5.0, v.GetMax());
}

// ---- Ranges and order kept up to date --------------------------------------------------------

namespace {

// The walk GetMin and GetMax answer for: the first value that no later value comes strictly
// before (a NaN first value stays; of +0 and -0 the first met).
void WalkExtremes(const VyrVecteur& v, double& lo, double& hi) {
    lo = hi = 0.0;
    const double* values = v.GetArea();
    if (!values || v.GetSize() < 1)
        return;
    lo = hi = values[0];
    for (int i = 1; i < v.GetSize(); ++i) {
        lo = values[i] < lo ? values[i] : lo;
        hi = values[i] > hi ? values[i] : hi;
    }
}

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

int WalkSortPosition(const VyrVecteur& v, double x) {
    int k = 0;
    while (k < v.GetSize() && v.GetArea()[k] < x)
        ++k;
    return k;
}

// Values that exercise the ties and the NaN: a few small integers, both zeros, a NaN, and
// now and then a far value that widens the range.
double DrawValue(std::mt19937& rng) {
    const int pick = static_cast<int>(rng() % 20);
    if (pick == 0)
        return 0.0;
    if (pick == 1)
        return -0.0;
    if (pick == 2)
        return std::numeric_limits<double>::quiet_NaN();
    if (pick == 3)
        return static_cast<double>(static_cast<int>(rng() % 2001) - 1000);
    return static_cast<double>(static_cast<int>(rng() % 21) - 10);
}

}  // namespace

TEST(VyrVecteurRanges, KeptRangeAndSortPositionAreTheWalks) {
    std::mt19937 rng(25);
    for (int round = 0; round < 40; ++round) {
        VyrVecteur v(1, nullptr);
        for (int step = 0; step < 400; ++step) {
            const int size = v.GetSize();
            const int op = static_cast<int>(rng() % 10);
            const double x = DrawValue(rng);
            if (op <= 3 || size == 0) {
                v.Resize(size + 1);
                v.SetVal(size, x);
            } else if (op == 4) {
                // A sorted insert as AddSortPoint makes it.
                int pos = 0;
                if (!v.GetSortPosition(x, &pos)) {
                    v.Resize(size + 1);
                    v.InsertVal(pos, x);
                }
            } else if (op == 5) {
                v.SetVal(static_cast<int>(rng() % size), x);
            } else if (op == 6) {
                v.RemoveValAt(static_cast<int>(rng() % size));
            } else if (op == 7) {
                v.Resize(static_cast<int>(rng() % (size + 1)));
            } else if (op == 8) {
                // Written through the storage, then handed back.
                v.GetArea()[rng() % size] = x;
                if (rng() % 2)
                    v.ValuesChanged();
            } else if (rng() % 8 == 0) {
                v.Raz();
            } else {
                v.ValidateAt(static_cast<int>(rng() % size), rng() % 2 == 0);
            }
            double lo, hi;
            WalkExtremes(v, lo, hi);
            ASSERT_TRUE(SameBits(v.GetMin(), lo)) << "round " << round << " step " << step;
            ASSERT_TRUE(SameBits(v.GetMax(), hi)) << "round " << round << " step " << step;
            const double probe = DrawValue(rng);
            int pos = -1;
            const bool equal = v.GetSortPosition(probe, &pos);
            ASSERT_EQ(pos, WalkSortPosition(v, probe)) << "round " << round << " step " << step;
            ASSERT_EQ(equal, pos < v.GetSize() && v.GetArea()[pos] == probe);
            const double* values = static_cast<const VyrVecteur&>(v).GetArea();
            bool ascending = true;
            for (int i = 0; i < v.GetSize(); ++i)
                ascending =
                    ascending && values[i] == values[i] && (i == 0 || values[i - 1] <= values[i]);
            ASSERT_EQ(v.IsSortedAscending(), ascending) << "round " << round << " step " << step;
        }
    }
}

TEST(VyrVecteurRanges, AppendedPointWidensRangeWithoutWalk) {
    VyrVecteur v(1, nullptr);
    for (int i = 0; i < 5; ++i) {
        v.Resize(i + 1);
        v.SetVal(i, i * 2.0);
    }
    EXPECT_EQ(v.GetMin(), 0.0);
    EXPECT_EQ(v.GetMax(), 8.0);
    EXPECT_TRUE(v.IsSortedAscending());
    v.Resize(6);
    v.SetVal(5, -3.0);
    EXPECT_EQ(v.GetMin(), -3.0);
    EXPECT_FALSE(v.IsSortedAscending());
    // Removing the extreme shrinks the range back.
    v.RemoveValAt(5);
    EXPECT_EQ(v.GetMin(), 0.0);
    EXPECT_TRUE(v.IsSortedAscending());
}

TEST(VyrVecteurRanges, WriteThroughStorageKeptPointerIsSeen) {
    VyrVecteur v(1, nullptr);
    v.Resize(3);
    double* values = v.GetArea();
    values[0] = 1.0;
    values[1] = 2.0;
    values[2] = 3.0;
    EXPECT_EQ(v.GetMax(), 3.0);
    // The pointer is still out: a later write through it counts.
    values[1] = 9.0;
    EXPECT_EQ(v.GetMax(), 9.0);
    EXPECT_FALSE(v.IsSortedAscending());
}

TEST(VyrVecteurRanges, NanFirstValueStaysTheAnswer) {
    VyrVecteur v(1, nullptr);
    v.Resize(2);
    v.SetVal(0, 1.0);
    v.SetVal(1, 5.0);
    EXPECT_EQ(v.GetMin(), 1.0);
    v.Resize(3);
    v.InsertVal(0, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(v.GetMin()));
    EXPECT_TRUE(std::isnan(v.GetMax()));
    v.RemoveValAt(0);
    EXPECT_EQ(v.GetMin(), 1.0);
    EXPECT_EQ(v.GetMax(), 5.0);
}

namespace {

// The lowest and highest value of block b by a walk (both NaN when it holds a NaN).
void WalkBlock(const VyrVecteur& v, int b, double& lo, double& hi) {
    const double* values = v.GetArea();
    const int first = b * VyrVecteur::kExtremesBlock;
    lo = hi = values[first];
    for (int i = first; i < first + VyrVecteur::kExtremesBlock; ++i) {
        const double x = values[i];
        if (x != x) {
            lo = hi = x;
            return;
        }
        lo = std::min(lo, x);
        hi = std::max(hi, x);
    }
}

}  // namespace

// The block extremes answer, after any sequence of appends, sorted inserts, sets, removals,
// shrinks and writes through the storage, exactly what a walk over each block gives.
TEST(VyrVecteurRanges, BlockExtremesAreTheWalksAfterEveryChange) {
    std::mt19937 rng(2526);
    for (int round = 0; round < 12; ++round) {
        VyrVecteur v(1, nullptr);
        const VyrVecteur& cv = v;
        int mostBlocks = 0;
        for (int step = 0; step < 1500; ++step) {
            const int size = v.GetSize();
            const int op = static_cast<int>(rng() % 12);
            const double x = DrawValue(rng);
            if (op <= 5 || size == 0) {
                v.Resize(size + 1);
                v.SetVal(size, x);
            } else if (op == 6) {
                int pos = 0;
                if (!v.GetSortPosition(x, &pos)) {
                    v.Resize(size + 1);
                    v.InsertVal(pos, x);
                }
            } else if (op == 7) {
                v.SetVal(static_cast<int>(rng() % size), x);
            } else if (op == 8) {
                v.RemoveValAt(static_cast<int>(rng() % size));
            } else if (op == 9 && rng() % 40 == 0) {
                v.Resize(static_cast<int>(rng() % (size + 1)));
            } else if (op == 10) {
                v.GetArea()[rng() % size] = x;
                v.ValuesChanged();
            } else {
                v.ValidateAt(static_cast<int>(rng() % size), rng() % 2 == 0);
            }
            const double* extremes = nullptr;
            const int blocks = cv.GetBlockExtremes(&extremes);
            ASSERT_EQ(blocks, v.GetSize() / VyrVecteur::kExtremesBlock)
                << "round " << round << " step " << step;
            mostBlocks = std::max(mostBlocks, blocks);
            for (int b = 0; b < blocks; ++b) {
                double lo, hi;
                WalkBlock(cv, b, lo, hi);
                ASSERT_TRUE(lo != lo ? extremes[2 * b] != extremes[2 * b] : extremes[2 * b] == lo)
                    << "round " << round << " step " << step << " block " << b;
                ASSERT_TRUE(hi != hi ? extremes[2 * b + 1] != extremes[2 * b + 1]
                                     : extremes[2 * b + 1] == hi)
                    << "round " << round << " step " << step << " block " << b;
            }
        }
        EXPECT_GE(mostBlocks, 4);
    }
}

// While write access is out no block is answered; once the values are handed back the blocks
// are those of the values written.
TEST(VyrVecteurRanges, BlockExtremesWaitForWrittenValuesToBeHandedBack) {
    VyrVecteur v(1, nullptr);
    v.Resize(200);
    for (int i = 0; i < 200; ++i)
        v.SetVal(i, i);
    const VyrVecteur& cv = v;
    const double* extremes = nullptr;
    ASSERT_EQ(cv.GetBlockExtremes(&extremes), 3);
    EXPECT_EQ(extremes[0], 0.0);
    EXPECT_EQ(extremes[1], 63.0);
    EXPECT_EQ(extremes[5], 191.0);
    v[70] = -5.0;
    EXPECT_EQ(cv.GetBlockExtremes(&extremes), 0);
    v.ValuesChanged();
    ASSERT_EQ(cv.GetBlockExtremes(&extremes), 3);
    EXPECT_EQ(extremes[2], -5.0);
    EXPECT_EQ(extremes[3], 127.0);
    // Fewer points than a block: none.
    v.Resize(63);
    EXPECT_EQ(cv.GetBlockExtremes(&extremes), 0);
}
