// One measured or computed series (entity kind 3): doubles with a quantity name (grandeur), a
// unit and a per-point validity mask. Invalid points keep their value and place; the operations
// below say which of them honour validity.
#ifndef VYRBASE_DATA_VYRVECTEUR_H
#define VYRBASE_DATA_VYRVECTEUR_H

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
    // The storage (may be null).
    double* GetArea() { return m_pValues; }
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
    // growth), or a private dummy slot when there is no storage at all.
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

    // Smallest / largest value, invalid points included; 0.0 for an empty vector.
    double GetMin() const;
    double GetMax() const;
    // GetMin and GetMax in one pass.
    void GetMinMax(double& lo, double& hi) const;
    // From start upward, skipping invalid points: the last valid point not greater than x,
    // stopping at the first valid point greater than x; -1 when none or start >= size.
    int FindIndex(double x, int start) const;
    // The first index whose value is not less than x (invalid points included); answers whether
    // it equals x exactly. None: *pos = size and false.
    bool GetSortPosition(double x, int* pos) const;
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
    // The extremes computed during the document's Delete of this number (0: none): the diagrams
    // recompute their ranges at each curve deleted, and need each vector's only once.
    // They hold for the storage and size they were computed on.
    mutable unsigned m_uExtremesOfEmptying = 0;
    mutable const double* m_pExtremesOf = nullptr;
    mutable int m_iExtremesSize = 0;
    mutable double m_dMin = 0.0;
    mutable double m_dMax = 0.0;
};

#endif
