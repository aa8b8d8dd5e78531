// Base64 codec of the pictures carried in the document file: standard alphabet, "=" padding,
// CR LF line breaks on encoding; on decoding every character outside the alphabet (line breaks,
// padding, anything else) is skipped.
//
// Buffers belong to the caller. GetSizeEncode64 gives the room EncodeBinaryToBase64 needs; a
// decoding buffer of three quarters of the text length suffices.
#ifndef VYRBASE_FILE_VYRENCODEBASE64_H
#define VYRBASE_FILE_VYRENCODEBASE64_H

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrEncodeBase64 {
public:
    VyrEncodeBase64() = delete;

    // Output buffer size for `length` input bytes: 4 * ceil(length / 3) characters plus
    // 2 * (characters / lineSize + 5) bytes for the line breaks and the terminating zero.
    // A lineSize of 0 or less means one unbroken line. A negative length counts as 0.
    static int GetSizeEncode64(int lineSize, int length);

    // Encodes `length` bytes of `in` into `out` (at least GetSizeEncode64 bytes), writing CR LF
    // after every group that brings the current line to lineSize characters or more, then a
    // terminating zero that *outLength does not count. A lineSize of 0 or less writes no break.
    // Null buffers or a negative length give an empty result (and *outLength 0).
    static void EncodeBinaryToBase64(unsigned char* in, unsigned char* out, int lineSize,
                                     int length, int* outLength);

    // One group: the first `len` (1 to 3) bytes of `in` to four characters, "=" standing for the
    // characters that only padding produced.
    static void Encodeblock64(const unsigned char in[3], unsigned char out[4], int len);
    // Four 6-bit values back to three bytes.
    static void Decodeblock64(const unsigned char in[4], unsigned char out[3]);

    // Decodes the zero-terminated `text` into `out`; *outLength counts the bytes written. A
    // last group of 2 or 3 characters gives 1 or 2 bytes; a lone last character gives nothing.
    // A null text gives nothing; a null out or outLength does nothing.
    static void DecodeBase64ToBinary(const char* text, unsigned char* out, unsigned int* outLength);
};

#endif
