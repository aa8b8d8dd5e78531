// One measured or computed series (entity kind 3): doubles with a quantity name (grandeur), a
// unit and a per-point validity mask. Invalid points keep their value and place; the operations
// below say which of them honour validity.
#ifndef VYRBASE_DATA_VYRVECTEUR_H
#define VYRBASE_DATA_VYRVECTEUR_H

#include <vector>

#include <wx/dynarray.h>
#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrBitMask.h"

class VYRBASE_API VyrVecteur : public VyrEntity {
public:
    VyrVecteur(int oid, VyrBaseData* base);
    // Shallow on purpose: copies the texts and mask but shares the value storage, which the
    // destructor frees. A copy must not outlive, nor be destroyed next to, its source.
    VyrVecteur(const VyrVecteur& other);
    // Deep copy of the data (quantity, unit, values, mask); keeps this vector's oid, name and
    // document.
    VyrVecteur& operator=(const VyrVecteur& other);
    ~VyrVecteur() override;

    int GetKind() const override { return VYR_KIND_VECTEUR; }

    int GetSize() const { return m_iSize; }
    int GetCapacity() const { return m_iCapacity; }
    // The storage (may be null). The non-const form hands out write access the vector cannot
    // follow: from then on, until the storage moves (Raz, PreAlloc, assignment, or a Resize
    // that reallocates), GetMin/GetMax and GetSortPosition walk the values again at each call
    // instead of keeping what they know up to date. Read through a const vector to avoid that.
    double* GetArea();
    // To be called once the values written through the non-const GetArea or operator[] are all
    // written and no pointer or reference will be written through again: the vector then
    // follows its values again from what they are now.
    void ValuesChanged();
    const double* GetArea() const { return m_pValues; }
    VyrBitMask* GetValidity() { return &m_validity; }
    const VyrBitMask* GetValidity() const { return &m_validity; }

    // Sets the quantity name and its table form (every "[" and "]" removed).
    void SetGrandeur(const wxString& grandeur);
    const wxString& GetGrandeur() const { return m_sGrandeur; }
    const wxString& GetGrandeurForTable() const { return m_sGrandeurForTable; }
    const wxString& GetUnite() const { return m_sUnite; }
    void SetUnite(const wxString& unite) { m_sUnite = unite; }

    // The slot of point i. Deliberate: an out-of-range index answers the slot of point 0 (no
    // growth), or a private dummy slot when there is no storage at all. Write access as with
    // the non-const GetArea; SetVal writes without giving it.
    double& operator[](int i);
    // 0.0 for an index out of range or no storage.
    double operator[](int i) const;
    double GetVal(int i) const { return (*this)[i]; }
    // Ignored for an index out of range or no storage.
    void SetVal(int i, double v);

    // Only when n exceeds the capacity: n zeroed doubles replace the storage without copying
    // (old values are lost). Size unchanged. A failed allocation changes nothing.
    void PreAlloc(int n);
    // size = n; grows the capacity to n + 100 when n exceeds it (old values kept, the rest
    // zeroed) and the mask to n bits. A failed allocation changes nothing. Appending one point
    // at a time costs amortised constant time.
    void Resize(int n);
    // Frees the storage (size and capacity 0). The mask keeps its bytes and invalid marks.
    void Raz();
    // For 0 <= i < size: moves i..size-2 (values and validity) one place up, drops the last
    // value, writes v at i; the bit at i keeps its state. Does not grow.
    void InsertVal(int i, double v);
    // For 0 <= i < size: moves i+1..size-1 down, marks the vacated last position invalid,
    // decrements the size.
    void RemoveValAt(int i);
    // For 0 <= i < size: marks the point valid or invalid.
    void ValidateAt(int i, bool valid);
    // False for an index out of range; else the mask bit.
    bool IsValidAt(int i) const;

    // Smallest / largest value, invalid points included; 0.0 for an empty vector. The same values
    // as a walk over all points that keeps the first value no later one comes strictly before
    // (a NaN first value stays; of +0 and -0 the first met). Kept up to date as points are
    // appended, inserted, set and removed through this class, so that a vector growing one
    // point at a time answers in constant time; walked again only after a change that can
    // shrink the range (the extreme itself removed or overwritten, a NaN, a tie of zeros).
    double GetMin() const;
    double GetMax() const;
    // GetMin and GetMax in one pass.
    void GetMinMax(double& lo, double& hi) const;
    // From start upward, skipping invalid points: the last valid point not greater than x,
    // stopping at the first valid point greater than x; -1 when none or start >= size.
    int FindIndex(double x, int start) const;
    // The first index whose value is not less than x (invalid points included); answers whether
    // it equals x exactly. None: *pos = size and false. Over the leading points known to ascend
    // (see IsSortedAscending) the position is found by bisection.
    bool GetSortPosition(double x, int* pos) const;
    // True when no value is NaN and none is less than the one before it (an empty vector
    // ascends). Known in constant time for a vector kept in order by appends and sorted
    // inserts; otherwise found by walking the values from where it was last known.
    bool IsSortedAscending() const;
    // The lowest and highest value of each whole block of kExtremesBlock consecutive values
    // from the first (both NaN for a block that holds a NaN, invalid points included), two
    // doubles per block in *extremes; answers the number of blocks (size / kExtremesBlock), or
    // 0 while write access is out (see GetArea) or when memory is short. For painters that
    // take the extremes of many points a block at a time. Kept as the vector changes: the
    // blocks at and after a change are found again when next asked, so a vector growing one
    // point at a time pays for its new blocks only. The pointer holds until the next change.
    static const int kExtremesBlock = 64;
    int GetBlockExtremes(const double** extremes) const;
    // Same size, same unit (case included) and exactly equal values. Quantity names and
    // validity are not compared.
    bool IsEqual(VyrVecteur* other) const;

    // Appends each value of a valid point of v not already in out (exact), then sorts when
    // asked.
    static void MergeVectors(VyrVecteur* v, wxArrayDouble& out, bool sort);
    // Appends the values of all points of a then of b (validity ignored) not already in out,
    // then sorts out ascending.
    static void MergeVectors(VyrVecteur* a, VyrVecteur* b, wxArrayDouble& out);

private:
    wxString m_sGrandeur;
    wxString m_sGrandeurForTable;
    wxString m_sUnite;
    VyrBitMask m_validity;
    int m_iSize = 0;
    double* m_pValues = nullptr;
    int m_iCapacity = 0;
    // Doubles actually allocated behind the capacity (at least the capacity): Resize reserves
    // geometrically so that growth by the 100-point slack seldom moves the storage.
    int m_iReserve = 0;
    double m_dDummy = 0.0;

    // What the vector knows about its own values, kept up to date by its own operations.
    // Dropped while write access is out (m_bExposed): see GetArea.
    void Forget() const;
    void ForgetFrom(int i) const;
    // A value taken out of the points [0, m_iRangeCount) or put into them, other than by an
    // append: the range is kept only when the change cannot shrink it and the walk's choice of
    // first value and of zero sign cannot differ.
    void RangeRemoved(double v) const;
    void RangeAdded(double v) const;
    void RangeCheckFirst() const;
    void Expose() const;
    void StorageMoved();
    mutable bool m_bExposed = false;
    // The range of the leading m_iRangeCount values (-1: unknown).
    mutable int m_iRangeCount = -1;
    mutable double m_dRangeLo = 0.0;
    mutable double m_dRangeHi = 0.0;
    // The leading m_iAscendingCount values ascend (no NaN); m_iAscendingChecked >= that many
    // were looked at (more: the value at m_iAscendingCount breaks the order).
    mutable int m_iAscendingCount = 0;
    mutable int m_iAscendingChecked = 0;
    // The extremes computed during the document's Delete of this number (0: none): the diagrams
    // recompute their ranges at each curve deleted, and need each vector's only once.
    // They hold for the storage and size they were computed on.
    mutable unsigned m_uExtremesOfEmptying = 0;
    mutable const double* m_pExtremesOf = nullptr;
    mutable int m_iExtremesSize = 0;
    mutable double m_dMin = 0.0;
    mutable double m_dMax = 0.0;
    // GetBlockExtremes: the blocks before m_iBlocksKnown are up to date.
    mutable std::vector<double> m_blockExtremes;
    mutable int m_iBlocksKnown = 0;
};

#endif
