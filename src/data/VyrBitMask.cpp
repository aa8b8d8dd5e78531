#include "vyrbase/data/VyrBitMask.h"

#include <climits>
#include <cstring>
#include <new>

namespace {
// Bytes needed to hold `bits` bits as the mask counts them (bits/8 + 1), or -1 when that does
// not fit an int.
int BytesFor(long long bits) {
    long long bytes = bits / 8 + 1;
    return bytes > INT_MAX ? -1 : static_cast<int>(bytes);
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
        bytes = new (std::nothrow) unsigned char[other.m_iSize];
        if (!bytes)
            return *this;  // out of memory: keep the old bytes rather than lose the marks
        std::memcpy(bytes, other.m_pBytes, other.m_iSize);
    }
    delete[] m_pBytes;
    m_pBytes = bytes;
    m_iSize = bytes ? other.m_iSize : 0;
    return *this;
}

VyrBitMask::~VyrBitMask() {
    delete[] m_pBytes;
}

bool VyrBitMask::GrowToBytes(int bytes) {
    if (bytes <= m_iSize)
        return true;
    auto* grown = new (std::nothrow) unsigned char[bytes];
    if (!grown)
        return false;
    // New bytes are zero, i.e. valid: growing never invalidates a point.
    std::memset(grown, 0, bytes);
    if (m_iSize > 0)
        std::memcpy(grown, m_pBytes, m_iSize);
    delete[] m_pBytes;
    m_pBytes = grown;
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
    if (Hold(i))
        m_pBytes[i / 8] |= static_cast<unsigned char>(1u << (i % 8));
}

bool VyrBitMask::Invert(int i) {
    if (Hold(i))
        m_pBytes[i / 8] ^= static_cast<unsigned char>(1u << (i % 8));
    return IsSet(i);
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
}

unsigned char VyrBitMask::GetOctetAt(int k) const {
    return k >= 0 && k < m_iSize ? m_pBytes[k] : 0;
}

void VyrBitMask::SetOctetAt(int k, unsigned char b) {
    if (k < 0 || k >= INT_MAX / 8)
        return;
    SetSize(k * 8 + 1);
    if (k < m_iSize)
        m_pBytes[k] = b;
}
