// The "over" blend of an opaque colour through a partial cover into a 32-bit image pixel, with
// the image renderer's own rounding, so that markers blended here are the pixels the renderer
// would have drawn.
#ifndef VYRBASE_DIAGRAM_VYRPIXELBLEND_H
#define VYRBASE_DIAGRAM_VYRPIXELBLEND_H

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace VyrPixelBlend {

// a x b / 255 for bytes a and b, rounded as the image renderer rounds it.
inline unsigned Mul(unsigned a, unsigned b) {
    const unsigned t = a * b + 0x80;
    return ((t >> 8) + t) >> 8;
}

// The colour's share of a pixel it covers by `cover` (0..255): Mul of each of its four bytes,
// packed in the pixel's byte order.
inline uint32_t ColourShare(const uint8_t colour[4], unsigned cover) {
    uint8_t share[4];
    for (int c = 0; c < 4; ++c)
        share[c] = static_cast<uint8_t>(Mul(colour[c], cover));
    uint32_t packed;
    std::memcpy(&packed, share, sizeof packed);
    return packed;
}

// Each of the four bytes of the pixel at px becomes Mul(byte, keep) plus the same byte of
// `share` (a ColourShare with cover = 255 - keep, keep 0..254). Two bytes to a 32-bit word, each
// in a 16-bit lane that Mul's largest intermediate (255 x 254 + 128 + 253) cannot overflow, so
// the result is Mul's to the bit; the sum cannot carry from one byte into the next, as
// Mul(c, cover) + Mul(p, 255 - cover) never exceeds 255.
inline void Over(uint8_t* px, uint32_t keep, uint32_t share) {
    uint32_t v;
    std::memcpy(&v, px, sizeof v);
    uint32_t even = (v & 0x00FF00FFu) * keep + 0x00800080u;
    even = ((even + ((even >> 8) & 0x00FF00FFu)) >> 8) & 0x00FF00FFu;
    uint32_t odd = ((v >> 8) & 0x00FF00FFu) * keep + 0x00800080u;
    odd = (odd + ((odd >> 8) & 0x00FF00FFu)) & 0xFF00FF00u;
    v = (even | odd) + share;
    std::memcpy(px, &v, sizeof v);
}

// Over for two pixels side by side (px and px + 4), each with its own keep and share: the same
// bytes as two calls of Over. With SSE2 the eight bytes go through 16-bit lanes at once, with
// Over's very arithmetic (the lanes hold its largest intermediate, as above).
inline void OverPair(uint8_t* px, uint32_t keep0, uint32_t share0, uint32_t keep1,
                     uint32_t share1) {
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    const __m128i p =
        _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(px)), zero);
    const __m128i keep = _mm_set_epi16(short(keep1), short(keep1), short(keep1), short(keep1),
                                       short(keep0), short(keep0), short(keep0), short(keep0));
    __m128i t = _mm_add_epi16(_mm_mullo_epi16(p, keep), _mm_set1_epi16(0x80));
    t = _mm_srli_epi16(_mm_add_epi16(_mm_srli_epi16(t, 8), t), 8);
    const __m128i share = _mm_set_epi32(0, 0, int(share1), int(share0));
    const __m128i out = _mm_add_epi8(_mm_packus_epi16(t, zero), share);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(px), out);
#else
    Over(px, keep0, share0);
    Over(px + 4, keep1, share1);
#endif
}

}  // namespace VyrPixelBlend

#endif
