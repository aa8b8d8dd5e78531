#include "vyrbase/data/VyrBitMask.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {
// Bytes needed to hold `bits` bits as the mask counts them (bits/8 + 1), or -1 when that does
// not fit an int.
int BytesFor(long long bits) {
    long long bytes = bits / 8 + 1;
    return bytes > INT_MAX ? -1 : static_cast<int>(bytes);
}

// The bits of byte b that lie within bit positions lo..hi.
unsigned char RangeMask(int b, int lo, int hi) {
    int from = lo > b * 8 ? lo - b * 8 : 0;
    int to = hi < b * 8 + 7 ? hi - b * 8 : 7;
    return static_cast<unsigned char>(((0xFFu << from) & (0xFFu >> (7 - to))) & 0xFFu);
}
}  // namespace

VyrBitMask::VyrBitMask() = default;

VyrBitMask::VyrBitMask(int bits) {
    if (bits >= 0)
        GrowToBytes(BytesFor(bits));
}

VyrBitMask::VyrBitMask(const VyrBitMask& other) {
    *this = other;
}

VyrBitMask& VyrBitMask::operator=(const VyrBitMask& other) {
    if (this == &other)
        return *this;
    unsigned char* bytes = nullptr;
    if (other.m_iSize > 0) {
        bytes = static_cast<unsigned char*>(std::malloc(other.m_iSize));
        if (!bytes)
            return *this;  // out of memory: keep the old bytes rather than lose the marks
        std::memcpy(bytes, other.m_pBytes, other.m_iSize);
    }
    std::free(m_pBytes);
    m_pBytes = bytes;
    m_iSize = bytes ? other.m_iSize : 0;
    m_iCapacity = m_iSize;
    m_iSetBelow = other.m_iSetBelow;
    return *this;
}

VyrBitMask::~VyrBitMask() {
    std::free(m_pBytes);
}

bool VyrBitMask::GrowToBytes(int bytes) {
    if (bytes <= m_iSize)
        return true;
    if (bytes > m_iCapacity) {
        // At least half again as much as held, so that growing byte by byte stays cheap.
        long long wanted = static_cast<long long>(m_iCapacity) + m_iCapacity / 2;
        int capacity =
            wanted > bytes ? static_cast<int>(wanted < INT_MAX ? wanted : INT_MAX) : bytes;
        auto* grown = static_cast<unsigned char*>(std::realloc(m_pBytes, capacity));
        if (!grown)
            return false;
        // New bytes are zero, i.e. valid: growing never invalidates a point.
        std::memset(grown + m_iCapacity, 0, capacity - m_iCapacity);
        m_pBytes = grown;
        m_iCapacity = capacity;
    }
    m_iSize = bytes;
    return true;
}

void VyrBitMask::SetSize(int bits) {
    // Kept: the mask never shrinks, also not for 0, so a vector's Raz keeps its invalid marks.
    if (bits < 0)
        return;
    int bytes = BytesFor(bits);
    if (bytes > 0)
        GrowToBytes(bytes);
}

bool VyrBitMask::Hold(int i) {
    if (i < 0)
        return false;
    if (i / 8 >= m_iSize)
        SetSize(i == INT_MAX ? i : i + 1);
    return i / 8 < m_iSize;
}

void VyrBitMask::Set(int i) {
    if (Hold(i))
        m_pBytes[i / 8] &= static_cast<unsigned char>(~(1u << (i % 8)));
}

void VyrBitMask::Unset(int i) {
    if (Hold(i)) {
        m_pBytes[i / 8] |= static_cast<unsigned char>(1u << (i % 8));
        m_iSetBelow = std::min(m_iSetBelow, i);
    }
}

bool VyrBitMask::Invert(int i) {
    if (Hold(i)) {
        m_pBytes[i / 8] ^= static_cast<unsigned char>(1u << (i % 8));
        m_iSetBelow = std::min(m_iSetBelow, i);
    }
    return IsSet(i);
}

int VyrBitMask::FindFirstUnset() const {
    int b = m_iSetBelow / 8;
    while (b < m_iSize && m_pBytes[b] == 0)
        ++b;
    if (b >= m_iSize) {
        // Bits beyond the stored bytes read as set.
        m_iSetBelow = static_cast<int>(std::min<long long>(8LL * m_iSize, INT_MAX));
        return INT_MAX;
    }
    int bit = 0;
    while ((m_pBytes[b] & (1u << bit)) == 0)
        ++bit;
    m_iSetBelow = b * 8 + bit;
    return m_iSetBelow;
}

bool VyrBitMask::IsSet(int i) const {
    if (i < 0)
        return false;
    if (i / 8 >= m_iSize)
        return true;
    return (m_pBytes[i / 8] & (1u << (i % 8))) == 0;
}

void VyrBitMask::SetBits(int count, int* octets) {
    if (count < 0 || count == INT_MAX)
        return;
    if (!GrowToBytes(count + 1))
        return;
    if (!octets)
        return;
    for (int k = 0; k < count; ++k)
        m_pBytes[k] = static_cast<unsigned char>(octets[k] & 0xFF);
    m_iSetBelow = 0;
}

unsigned char VyrBitMask::GetOctetAt(int k) const {
    return k >= 0 && k < m_iSize ? m_pBytes[k] : 0;
}

void VyrBitMask::SetOctetAt(int k, unsigned char b) {
    if (k < 0 || k >= INT_MAX / 8)
        return;
    SetSize(k * 8 + 1);
    if (k < m_iSize) {
        m_pBytes[k] = b;
        m_iSetBelow = std::min(m_iSetBelow, k * 8);
    }
}

// Both shifts work a byte at a time: each destination byte takes its own bits shifted by one
// and the neighbouring byte's edge bit, masked to the range, so that a point inserted into or
// removed from a long vector costs one pass over its mask bytes, not one call per bit.
void VyrBitMask::ShiftUp(int first, int end) {
    if (first < 0 || end <= first + 1 || (end - 1) / 8 >= m_iSize)
        return;
    const int lo = first + 1, hi = end - 1;  // the destination bits
    m_iSetBelow = std::min(m_iSetBelow, lo);
    for (int b = hi / 8; b >= lo / 8; --b) {
        unsigned shifted = static_cast<unsigned>(m_pBytes[b]) << 1;
        if (b > 0)
            shifted |= m_pBytes[b - 1] >> 7;
        const unsigned char mask = RangeMask(b, lo, hi);
        m_pBytes[b] = static_cast<unsigned char>((m_pBytes[b] & ~mask) | (shifted & mask));
    }
}

void VyrBitMask::ShiftDown(int first, int end) {
    if (first < 0 || end <= first + 1 || (end - 1) / 8 >= m_iSize)
        return;
    const int lo = first, hi = end - 2;  // the destination bits
    m_iSetBelow = std::min(m_iSetBelow, lo);
    for (int b = lo / 8; b <= hi / 8; ++b) {
        unsigned shifted = m_pBytes[b] >> 1;
        if (b + 1 < m_iSize)
            shifted |= static_cast<unsigned>(m_pBytes[b + 1]) << 7;
        const unsigned char mask = RangeMask(b, lo, hi);
        m_pBytes[b] = static_cast<unsigned char>((m_pBytes[b] & ~mask) | (shifted & mask));
    }
}
