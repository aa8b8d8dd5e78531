// Base64 encoding and decoding of picture data.
#include "vyrbase/file/VyrEncodeBase64.h"

#include <array>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The decoding table covers the codes from '+' (43) to 'z' (122), the span of the alphabet.
constexpr int kFirstCode = '+';
constexpr int kTableSize = 80;
constexpr char kNotInAlphabet = '$';
// Entries hold the 6-bit value plus this offset, so that every entry stays a printable
// character and '$' stays free to mark the codes outside the alphabet.
constexpr int kValueOffset = 62;

constexpr std::array<char, kTableSize> MakeDecodeTable() {
    std::array<char, kTableSize> table{};
    for (char& entry : table)
        entry = kNotInAlphabet;
    for (int value = 0; value < 64; ++value)
        table[kAlphabet[value] - kFirstCode] = static_cast<char>(value + kValueOffset);
    return table;
}

constexpr std::array<char, kTableSize> kDecodeTable = MakeDecodeTable();

}  // namespace

int VyrEncodeBase64::GetSizeEncode64(int lineSize, int length) {
    if (length < 0)
        length = 0;
    const int characters = 4 * ((length + 2) / 3);
    const int breaks = lineSize > 0 ? characters / lineSize : 0;
    return characters + 2 * (breaks + 5);
}

void VyrEncodeBase64::Encodeblock64(const unsigned char in[3], unsigned char out[4], int len) {
    out[0] = static_cast<unsigned char>(kAlphabet[in[0] >> 2]);
    out[1] = static_cast<unsigned char>(kAlphabet[((in[0] & 0x03) << 4) | ((in[1] & 0xf0) >> 4)]);
    out[2] = static_cast<unsigned char>(
        len > 1 ? kAlphabet[((in[1] & 0x0f) << 2) | ((in[2] & 0xc0) >> 6)] : '=');
    out[3] = static_cast<unsigned char>(len > 2 ? kAlphabet[in[2] & 0x3f] : '=');
}

void VyrEncodeBase64::Decodeblock64(const unsigned char in[4], unsigned char out[3]) {
    out[0] = static_cast<unsigned char>(in[0] << 2 | in[1] >> 4);
    out[1] = static_cast<unsigned char>(in[1] << 4 | in[2] >> 2);
    out[2] = static_cast<unsigned char>(((in[2] << 6) & 0xc0) | in[3]);
}

void VyrEncodeBase64::EncodeBinaryToBase64(unsigned char* in, unsigned char* out, int lineSize,
                                           int length, int* outLength) {
    int written = 0;
    if (in && out && length > 0) {
        int lineLength = 0;
        for (int pos = 0; pos < length; pos += 3) {
            unsigned char group[3] = {0, 0, 0};
            const int len = length - pos < 3 ? length - pos : 3;
            for (int k = 0; k < len; ++k)
                group[k] = in[pos + k];
            Encodeblock64(group, out + written, len);
            written += 4;
            lineLength += 4;
            // The break follows the group that fills the line, so a text whose length is a
            // multiple of lineSize ends with CR LF and a shorter last line does not.
            if (lineSize > 0 && lineLength >= lineSize) {
                out[written++] = '\r';
                out[written++] = '\n';
                lineLength = 0;
            }
        }
    }
    if (out)
        out[written] = 0;
    if (outLength)
        *outLength = written;
}

void VyrEncodeBase64::DecodeBase64ToBinary(const char* text, unsigned char* out,
                                           unsigned int* outLength) {
    if (!out || !outLength)
        return;
    *outLength = 0;
    if (!text)
        return;
    unsigned char group[4];
    int gathered = 0;
    for (const char* p = text; *p; ++p) {
        const int code = static_cast<unsigned char>(*p);
        if (code < kFirstCode || code >= kFirstCode + kTableSize)
            continue;
        const char entry = kDecodeTable[code - kFirstCode];
        if (entry == kNotInAlphabet)
            continue;
        group[gathered++] = static_cast<unsigned char>(entry - kValueOffset);
        if (gathered == 4) {
            Decodeblock64(group, out + *outLength);
            *outLength += 3;
            gathered = 0;
        }
    }
    if (gathered >= 2) {
        for (int k = gathered; k < 4; ++k)
            group[k] = 0;
        unsigned char bytes[3];
        Decodeblock64(group, bytes);
        for (int k = 0; k < gathered - 1; ++k)
            out[(*outLength)++] = bytes[k];
    }
}
