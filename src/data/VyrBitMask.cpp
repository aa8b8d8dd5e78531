#include "vyrbase/data/VyrBitMask.h"

#include <cstring>

VyrBitMask::VyrBitMask() = default;

VyrBitMask::VyrBitMask(const VyrBitMask& other) {
    *this = other;
}

VyrBitMask& VyrBitMask::operator=(const VyrBitMask& other) {
    if (this == &other)
        return *this;
    unsigned char* bytes = nullptr;
    if (other.m_iSize > 0) {
        bytes = new unsigned char[other.m_iSize];
        std::memcpy(bytes, other.m_pBytes, other.m_iSize);
    }
    delete[] m_pBytes;
    m_pBytes = bytes;
    m_iSize = other.m_iSize;
    return *this;
}

VyrBitMask::~VyrBitMask() {
    delete[] m_pBytes;
}
