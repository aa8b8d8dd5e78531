#include "vyrbase/data/VyrVecteur.h"

#include "vyrbase/core/VyrBaseData.h"

#include "core/VyrLargePages.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {
// Growth slack of Resize: appending one point at a time reallocates once per 100 points.
const int kResizeSlack = 100;

// The storage lives in malloc'ed memory so that growth goes through realloc, which extends a
// block in place when it can.
double* AllocateZeroed(int n) {
    return static_cast<double*>(std::calloc(static_cast<size_t>(n), sizeof(double)));
}

// *std::min_element and *std::max_element of n >= 1 values in one pass, in many independent
// lanes so that the processor overlaps them (two values to a vector register where SSE2 is
// there): the diagrams ask for the ranges of every plotted vector at each change of the
// document.
//
// The same values as the sequential walks, which keep the first value that no later one comes
// strictly before: a NaN first value is never replaced, a later NaN never taken (no comparison
// with NaN holds; MINPD and MAXPD give their second operand then, as "x < m ? x : m" does), and
// every lane starts from the first value, so no lane takes a NaN either. Of equal values only
// zeros can differ (+0 and -0 compare equal): when a result is a zero, the first zero of the
// values is the one the walk keeps.
void Extremes(const double* values, int n, double& lo, double& hi) {
    const double first = values[0];
    double mins[8], maxs[8];
    int i = 1;
#if defined(__SSE2__)
    __m128d mn[4], mx[4];
    for (int k = 0; k < 4; ++k)
        mn[k] = mx[k] = _mm_set1_pd(first);
    for (; i + 8 <= n; i += 8) {
        for (int k = 0; k < 4; ++k) {
            const __m128d x = _mm_loadu_pd(values + i + 2 * k);
            mn[k] = _mm_min_pd(x, mn[k]);
            mx[k] = _mm_max_pd(x, mx[k]);
        }
    }
    for (int k = 0; k < 4; ++k) {
        _mm_storeu_pd(mins + 2 * k, mn[k]);
        _mm_storeu_pd(maxs + 2 * k, mx[k]);
    }
#else
    for (int k = 0; k < 8; ++k)
        mins[k] = maxs[k] = first;
    for (; i + 8 <= n; i += 8) {
        for (int k = 0; k < 8; ++k) {
            const double x = values[i + k];
            mins[k] = x < mins[k] ? x : mins[k];
            maxs[k] = x > maxs[k] ? x : maxs[k];
        }
    }
#endif
    for (; i < n; ++i) {
        mins[0] = values[i] < mins[0] ? values[i] : mins[0];
        maxs[0] = values[i] > maxs[0] ? values[i] : maxs[0];
    }
    lo = mins[0];
    hi = maxs[0];
    for (int k = 1; k < 8; ++k) {
        lo = mins[k] < lo ? mins[k] : lo;
        hi = maxs[k] > hi ? maxs[k] : hi;
    }
    auto firstZero = [values, n]() {
        for (int j = 0; j < n; ++j)
            if (values[j] == 0.0)
                return values[j];
        return 0.0;
    };
    if (lo == 0.0)
        lo = firstZero();
    if (hi == 0.0)
        hi = firstZero();
}

// Ascending by "<"; NaN (which "<" cannot order) goes last so that the sort stays well defined.
bool LessNanLast(double a, double b) {
    if (std::isnan(a))
        return false;
    if (std::isnan(b))
        return true;
    return a < b;
}

bool Contains(const wxArrayDouble& values, double v) {
    for (size_t k = 0; k < values.GetCount(); ++k)
        if (values[k] == v)
            return true;
    return false;
}

void AppendNew(wxArrayDouble& out, double v) {
    if (!Contains(out, v))
        out.Add(v);
}
}  // namespace

VyrVecteur::VyrVecteur(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrVecteur::VyrVecteur(const VyrVecteur& other)
    : VyrEntity(other),
      m_sGrandeur(other.m_sGrandeur),
      m_sGrandeurForTable(other.m_sGrandeurForTable),
      m_sUnite(other.m_sUnite),
      m_validity(other.m_validity),
      m_iSize(other.m_iSize),
      m_pValues(other.m_pValues),
      m_iCapacity(other.m_iCapacity),
      m_iReserve(other.m_iReserve) {
    // Two vectors now write to one storage, and neither sees the other's writes.
    Expose();
    other.Expose();
}

VyrVecteur& VyrVecteur::operator=(const VyrVecteur& other) {
    if (this == &other)
        return *this;
    // Allocated first so that running out of memory leaves this vector as it was.
    double* values = nullptr;
    int capacity = 0;
    if (other.m_iSize > 0) {
        if (other.m_iSize > INT_MAX - kResizeSlack)
            return *this;
        capacity = other.m_iSize + kResizeSlack;
        values = AllocateZeroed(capacity);
        if (!values)
            return *this;
    }
    SetGrandeur(other.m_sGrandeur);
    m_sUnite = other.m_sUnite;
    std::free(m_pValues);
    m_pValues = values;
    m_iCapacity = capacity;
    m_iReserve = capacity;
    m_iSize = other.m_iSize;
    for (int i = 0; i < m_iSize; ++i)
        m_pValues[i] = other[i];
    m_validity = other.m_validity;
    StorageMoved();
    Forget();
    return *this;
}

VyrVecteur::~VyrVecteur() {
    std::free(m_pValues);
}

void VyrVecteur::SetGrandeur(const wxString& grandeur) {
    m_sGrandeur = grandeur;
    m_sGrandeurForTable = grandeur;
    m_sGrandeurForTable.Replace(L"[", L"");
    m_sGrandeurForTable.Replace(L"]", L"");
}

double* VyrVecteur::GetArea() {
    Expose();
    return m_pValues;
}

void VyrVecteur::ValuesChanged() {
    m_bExposed = false;
    Forget();
}

double& VyrVecteur::operator[](int i) {
    Expose();
    // Deliberate: an out-of-range write lands on point 0, never grows and never throws.
    if (!m_pValues)
        return m_dDummy;
    if (i < 0 || i >= m_iSize)
        return m_pValues[0];
    return m_pValues[i];
}

double VyrVecteur::operator[](int i) const {
    if (!m_pValues || i < 0 || i >= m_iSize)
        return 0.0;
    return m_pValues[i];
}

void VyrVecteur::SetVal(int i, double v) {
    if (!m_pValues || i < 0 || i >= m_iSize)
        return;
    const double old = m_pValues[i];
    m_pValues[i] = v;
    m_iBlocksKnown = std::min(m_iBlocksKnown, i / kExtremesBlock);
    if (i < m_iRangeCount) {
        RangeRemoved(old);
        RangeAdded(v);
        RangeCheckFirst();
    }
    // The order holds on when the new value still lies between its neighbours.
    if (i < m_iAscendingChecked) {
        const bool ordered = i < m_iAscendingCount && v == v && (i == 0 || m_pValues[i - 1] <= v) &&
                             (i + 1 >= m_iAscendingCount || v <= m_pValues[i + 1]);
        if (!ordered)
            ForgetFrom(i);
    }
}

void VyrVecteur::PreAlloc(int n) {
    if (n <= m_iCapacity)
        return;
    // The old values are not copied: callers pre-allocate empty vectors only.
    double* values = AllocateZeroed(n);
    if (!values)
        return;
    // Storage made at once for values about to be written (a table being read, an import):
    // a large one faults in large pages (a 10^7-point load about a ninth faster).
    VyrAdviseLargePages(values, static_cast<size_t>(n) * sizeof(double));
    std::free(m_pValues);
    m_pValues = values;
    m_iCapacity = n;
    m_iReserve = n;
    StorageMoved();
    Forget();
}

void VyrVecteur::Resize(int n) {
    if (n < 0)
        return;
    if (n > m_iCapacity) {
        if (n > INT_MAX - kResizeSlack)
            return;
        const int capacity = n + kResizeSlack;
        if (capacity > m_iReserve) {
            // The capacity grows by the slack of 100 points as the vector always did, but the
            // memory behind it grows by half each time: with a fixed slack alone every
            // reallocation would copy the whole array, and appending n points one by one would
            // cost time in n squared.
            long long wanted = static_cast<long long>(m_iReserve) + m_iReserve / 2;
            int reserve = wanted > capacity ? static_cast<int>(wanted < INT_MAX ? wanted : INT_MAX)
                                            : capacity;
            auto* values = static_cast<double*>(
                std::realloc(m_pValues, static_cast<size_t>(reserve) * sizeof(double)));
            if (!values && reserve > capacity) {
                // Short of memory: ask for no more than the capacity itself.
                reserve = capacity;
                values = static_cast<double*>(
                    std::realloc(m_pValues, static_cast<size_t>(reserve) * sizeof(double)));
            }
            if (!values)
                return;  // realloc left the old storage as it was
            const bool moved = values != m_pValues;
            m_pValues = values;
            if (moved)
                StorageMoved();
            m_iReserve = reserve;
        }
        // What lies beyond the old capacity reads 0.0, as in freshly allocated storage.
        std::memset(m_pValues + m_iCapacity, 0,
                    static_cast<size_t>(capacity - m_iCapacity) * sizeof(double));
        m_iCapacity = capacity;
    }
    if (n < m_iSize) {
        // Values leave: the range may shrink.
        if (m_iRangeCount > n)
            m_iRangeCount = -1;
        ForgetFrom(n);
    }
    m_iSize = n;
    m_validity.SetSize(n);
}

void VyrVecteur::Raz() {
    std::free(m_pValues);
    m_pValues = nullptr;
    m_iSize = 0;
    m_iCapacity = 0;
    m_iReserve = 0;
    StorageMoved();
    Forget();
    // Kept: the mask ignores the request to shrink, so earlier invalid marks come back when the
    // vector grows again.
    m_validity.SetSize(0);
}

void VyrVecteur::InsertVal(int i, double v) {
    if (!m_pValues || i < 0 || i >= m_iSize)
        return;
    // The last value drops out, v comes in.
    if (i < m_iRangeCount) {
        if (m_iRangeCount == m_iSize)
            RangeRemoved(m_pValues[m_iSize - 1]);
        else
            ++m_iRangeCount;
        RangeAdded(v);
    }
    ForgetFrom(i);
    std::memmove(m_pValues + i + 1, m_pValues + i,
                 static_cast<size_t>(m_iSize - 1 - i) * sizeof(double));
    m_validity.SetSize(m_iSize);
    m_validity.ShiftUp(i, m_iSize);
    m_pValues[i] = v;
    RangeCheckFirst();
}

void VyrVecteur::RemoveValAt(int i) {
    if (!m_pValues || i < 0 || i >= m_iSize)
        return;
    if (i < m_iRangeCount) {
        RangeRemoved(m_pValues[i]);
        if (m_iRangeCount > 0)
            --m_iRangeCount;
        if (m_iRangeCount == 0)
            m_iRangeCount = -1;
    }
    ForgetFrom(i);
    std::memmove(m_pValues + i, m_pValues + i + 1,
                 static_cast<size_t>(m_iSize - 1 - i) * sizeof(double));
    m_validity.SetSize(m_iSize);
    m_validity.ShiftDown(i, m_iSize);
    m_validity.Unset(m_iSize - 1);
    --m_iSize;
    RangeCheckFirst();
}

void VyrVecteur::ValidateAt(int i, bool valid) {
    if (i < 0 || i >= m_iSize)
        return;
    if (valid)
        m_validity.Set(i);
    else
        m_validity.Unset(i);
}

bool VyrVecteur::IsValidAt(int i) const {
    if (i < 0 || i >= m_iSize)
        return false;
    return m_validity.IsSet(i);
}

double VyrVecteur::GetMin() const {
    double lo, hi;
    GetMinMax(lo, hi);
    return lo;
}

double VyrVecteur::GetMax() const {
    double lo, hi;
    GetMinMax(lo, hi);
    return hi;
}

void VyrVecteur::GetMinMax(double& lo, double& hi) const {
    if (!m_pValues || m_iSize < 1) {
        lo = hi = 0.0;
        return;
    }
    if (!m_bExposed) {
        if (m_iRangeCount < 1 || m_iRangeCount > m_iSize) {
            Extremes(m_pValues, m_iSize, m_dRangeLo, m_dRangeHi);
        } else {
            // The walk goes on from where it stopped: appended points cost their own number.
            double l = m_dRangeLo, h = m_dRangeHi;
            for (int i = m_iRangeCount; i < m_iSize; ++i) {
                const double x = m_pValues[i];
                l = x < l ? x : l;
                h = x > h ? x : h;
            }
            m_dRangeLo = l;
            m_dRangeHi = h;
        }
        m_iRangeCount = m_iSize;
        lo = m_dRangeLo;
        hi = m_dRangeHi;
        return;
    }
    // While the document empties itself nothing writes to its vectors: the extremes found once
    // in that Delete are the extremes until it ends.
    const VyrBaseData* base = GetBase();
    const unsigned emptying = base && base->IsEmptying() ? base->GetEmptyingNumber() : 0;
    if (emptying != 0 && emptying == m_uExtremesOfEmptying && m_pExtremesOf == m_pValues &&
        m_iExtremesSize == m_iSize) {
        lo = m_dMin;
        hi = m_dMax;
        return;
    }
    Extremes(m_pValues, m_iSize, lo, hi);
    if (emptying != 0) {
        m_uExtremesOfEmptying = emptying;
        m_pExtremesOf = m_pValues;
        m_iExtremesSize = m_iSize;
        m_dMin = lo;
        m_dMax = hi;
    }
}

bool VyrVecteur::IsSortedAscending() const {
    auto ascendsAt = [this](int i) {
        const double x = m_pValues[i];
        return x == x && (i == 0 || m_pValues[i - 1] <= x);
    };
    if (!m_pValues)
        return true;
    if (m_bExposed) {
        for (int i = 0; i < m_iSize; ++i)
            if (!ascendsAt(i))
                return false;
        return true;
    }
    if (m_iAscendingCount == m_iAscendingChecked) {
        int a = m_iAscendingCount;
        while (a < m_iSize && ascendsAt(a))
            ++a;
        m_iAscendingCount = a;
        m_iAscendingChecked = a < m_iSize ? a + 1 : a;
    }
    return m_iAscendingCount >= m_iSize;
}

int VyrVecteur::GetBlockExtremes(const double** extremes) const {
    *extremes = nullptr;
    if (!m_pValues || m_bExposed || m_iSize < kExtremesBlock)
        return 0;
    const int blocks = m_iSize / kExtremesBlock;
    if (m_iBlocksKnown < blocks) {
        try {
            if (m_blockExtremes.size() < 2 * static_cast<size_t>(blocks))
                m_blockExtremes.resize(2 * static_cast<size_t>(blocks));
        } catch (const std::bad_alloc&) {
            return 0;
        }
        for (int b = m_iBlocksKnown; b < blocks; ++b) {
            const double* v = m_pValues + static_cast<size_t>(b) * kExtremesBlock;
            double lo = v[0], hi = v[0];
            bool nan = false;
            for (int k = 0; k < kExtremesBlock; ++k) {
                const double x = v[k];
                nan |= x != x;
                lo = x < lo ? x : lo;
                hi = x > hi ? x : hi;
            }
            const double none = std::numeric_limits<double>::quiet_NaN();
            m_blockExtremes[2 * static_cast<size_t>(b)] = nan ? none : lo;
            m_blockExtremes[2 * static_cast<size_t>(b) + 1] = nan ? none : hi;
        }
        m_iBlocksKnown = blocks;
    }
    *extremes = m_blockExtremes.data();
    return blocks;
}

void VyrVecteur::Forget() const {
    m_iBlocksKnown = 0;
    m_iRangeCount = -1;
    m_iAscendingCount = 0;
    m_iAscendingChecked = 0;
}

void VyrVecteur::ForgetFrom(int i) const {
    m_iBlocksKnown = std::min(m_iBlocksKnown, std::max(i, 0) / kExtremesBlock);
    m_iAscendingCount = std::min(m_iAscendingCount, i);
    m_iAscendingChecked = std::min(m_iAscendingChecked, i);
}

void VyrVecteur::RangeRemoved(double v) const {
    if (m_iRangeCount < 1)
        return;
    // A NaN that is not the first value was never taken; any other value must lie strictly
    // inside the range, or the range may shrink (or a zero of the other sign take its place).
    const bool kept = m_dRangeLo == m_dRangeLo && m_dRangeHi == m_dRangeHi &&
                      (v != v || (v > m_dRangeLo && v < m_dRangeHi));
    if (!kept)
        m_iRangeCount = -1;
}

void VyrVecteur::RangeAdded(double v) const {
    if (m_iRangeCount < 1)
        return;
    if (m_dRangeLo != m_dRangeLo || m_dRangeHi != m_dRangeHi ||
        (v == 0.0 && (m_dRangeLo == 0.0 || m_dRangeHi == 0.0))) {
        m_iRangeCount = -1;  // which of the equal zeros comes first depends on the places
        return;
    }
    // A NaN is never taken unless it comes first, which RangeCheckFirst looks at.
    m_dRangeLo = v < m_dRangeLo ? v : m_dRangeLo;
    m_dRangeHi = v > m_dRangeHi ? v : m_dRangeHi;
}

void VyrVecteur::RangeCheckFirst() const {
    // A NaN first value is the walk's answer, whatever follows.
    if (m_iRangeCount >= 1 && m_iSize > 0 && m_pValues[0] != m_pValues[0])
        m_iRangeCount = -1;
}

void VyrVecteur::Expose() const {
    m_bExposed = true;
    Forget();
}

void VyrVecteur::StorageMoved() {
    // No pointer into the old storage is valid any more, so no write can come through one.
    m_bExposed = false;
}

int VyrVecteur::FindIndex(double x, int start) const {
    if (start >= m_iSize || !m_pValues)
        return -1;
    int found = -1;
    for (int k = std::max(start, 0); k < m_iSize; ++k) {
        if (!m_validity.IsSet(k))
            continue;
        if (m_pValues[k] > x)
            break;
        found = k;
    }
    return found;
}

bool VyrVecteur::GetSortPosition(double x, int* pos) const {
    // Invalid points count too: the position keeps X ascending whatever their marks.
    int k = 0;
    bool equal = false;
    if (m_pValues) {
        if (!m_bExposed) {
            // Over the leading points that ascend, the first one not less than x is where the
            // walk would stop, if it stops there at all.
            IsSortedAscending();
            k = static_cast<int>(std::lower_bound(m_pValues, m_pValues + m_iAscendingCount, x) -
                                 m_pValues);
        }
        while (k < m_iSize && m_pValues[k] < x)
            ++k;
        equal = k < m_iSize && m_pValues[k] == x;
    }
    if (pos)
        *pos = k;
    return equal;
}

bool VyrVecteur::IsEqual(VyrVecteur* other) const {
    if (!other)
        return false;
    if (other->m_iSize != m_iSize || other->m_sUnite != m_sUnite)
        return false;
    for (int i = 0; i < m_iSize; ++i)
        if ((*this)[i] != static_cast<const VyrVecteur&>(*other)[i])
            return false;
    return true;
}

void VyrVecteur::MergeVectors(VyrVecteur* v, wxArrayDouble& out, bool sort) {
    if (!v)
        return;
    const VyrVecteur& source = *v;
    for (int i = 0; i < source.GetSize(); ++i)
        if (source.IsValidAt(i))
            AppendNew(out, source[i]);
    if (sort)
        std::sort(out.begin(), out.end(), LessNanLast);
}

void VyrVecteur::MergeVectors(VyrVecteur* a, VyrVecteur* b, wxArrayDouble& out) {
    for (VyrVecteur* v : {a, b}) {
        if (!v)
            continue;
        const VyrVecteur& source = *v;
        for (int i = 0; i < source.GetSize(); ++i)
            AppendNew(out, source[i]);
    }
    std::sort(out.begin(), out.end(), LessNanLast);
}
