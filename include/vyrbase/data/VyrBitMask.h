// Per-point validity of a vector. Bit i lives in byte i/8 at bit i%8, least significant first.
// The stored sense is inverted: a stored 0 means set (valid), a stored 1 means not set
// (invalid), and any bit beyond the stored bytes reads as set. New bytes are zero, so growing
// never invalidates a point; the mask never shrinks, so invalid marks survive a vector's Raz.
#ifndef VYRBASE_DATA_VYRBITMASK_H
#define VYRBASE_DATA_VYRBITMASK_H

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrBitMask {
public:
    VyrBitMask();
    // bits/8 + 1 zero bytes.
    explicit VyrBitMask(int bits);
    VyrBitMask(const VyrBitMask& other);
    VyrBitMask& operator=(const VyrBitMask& other);
    virtual ~VyrBitMask();

    // Grows (never shrinks) to bits/8 + 1 bytes, zero-filled, old bytes kept.
    void SetSize(int bits);
    // Marks bit i valid (stored 0), growing as needed.
    void Set(int i);
    // Marks bit i invalid (stored 1), growing as needed.
    void Unset(int i);
    // Flips bit i (growing as needed); true when it now reads as set.
    bool Invert(int i);
    // True when i/8 is beyond the stored bytes or the stored bit is 0. Negative i: false.
    bool IsSet(int i) const;
    // Grows to at least count + 1 bytes, then stores the low byte of each integer into bytes
    // 0..count-1 (a mask saved as a table of byte values).
    void SetBits(int count, int* octets);

    // The number of bytes held (not bits).
    int GetSize() const { return m_iSize; }
    // Byte k, or 0 when k is out of range.
    unsigned char GetOctetAt(int k) const;
    // Grows to k*8 + 1 bits first. Negative k is ignored.
    void SetOctetAt(int k, unsigned char b);
    // Byte k, unchecked.
    unsigned char operator[](int k) const { return m_pBytes[k]; }
    // The first bit that reads as not set (an invalid point), or INT_MAX when every bit reads as
    // set. Walks only the bytes changed or added since it last answered, so that a vector that
    // grows one valid point at a time answers "is every point valid" in constant time.
    int FindFirstUnset() const;
    // The GetSize() bytes held (null when none), for walks that test many points at once.
    const unsigned char* GetBytes() const { return m_pBytes; }

    // Bits first..end-2 move one place up (bit k+1 takes bit k); bit `first` keeps its state
    // and bit end-1 is overwritten. Used to insert a point. Ignored unless 0 <= first < end and
    // the mask holds bit end-1.
    void ShiftUp(int first, int end);
    // Bits first+1..end-1 move one place down (bit k takes bit k+1); bit end-1 keeps its state.
    // Used to remove a point. Same conditions as ShiftUp.
    void ShiftDown(int first, int end);

private:
    // Reallocates to exactly `bytes` bytes when it holds fewer (zero-filled, old bytes kept).
    // False when the allocation failed (the mask is then unchanged).
    bool GrowToBytes(int bytes);
    // Grows to hold bit i (SetSize(i + 1)) when needed; false for a negative i or a failed
    // allocation.
    bool Hold(int i);

    int m_iSize = 0;
    // Bytes allocated: at least m_iSize, grown geometrically so that a mask that follows a vector
    // point by point is not copied every eight points. Bytes past m_iSize stay zero.
    int m_iCapacity = 0;
    unsigned char* m_pBytes = nullptr;
    // Every bit below this one is known to read as set: each change that can unset a bit lowers
    // it to that bit, FindFirstUnset raises it.
    mutable int m_iSetBelow = 0;
};

#endif
