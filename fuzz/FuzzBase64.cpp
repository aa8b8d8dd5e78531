// The base64 codec of the pictures: decoding any text stays inside a buffer of three quarters
// of its length, and encoding any bytes at any line size decodes back to them.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "vyrbase/file/VyrEncodeBase64.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > (1u << 20))
        return 0;
    // Decoding: the text ends at its first zero byte, as a C string.
    const std::string text(reinterpret_cast<const char*>(data), size);
    const size_t textLength = std::strlen(text.c_str());
    // Exactly the room the codec promises to need, so that the sanitizer sees any overrun.
    std::vector<unsigned char> decoded(textLength * 3 / 4 + 1);
    unsigned int decodedLength = 12345;
    VyrEncodeBase64::DecodeBase64ToBinary(text.c_str(), decoded.data(), &decodedLength);
    vyrfuzz::Check(decodedLength <= textLength * 3 / 4, "decoding yields at most 3/4 of the text");

    // Encoding: the first byte picks the line size (0: one unbroken line).
    if (size == 0)
        return 0;
    const int lineSize = data[0] % 90;
    std::vector<unsigned char> input(data + 1, data + size);
    const int length = static_cast<int>(input.size());
    const int room = VyrEncodeBase64::GetSizeEncode64(lineSize, length);
    std::vector<unsigned char> encoded(static_cast<size_t>(room));
    int encodedLength = -1;
    VyrEncodeBase64::EncodeBinaryToBase64(input.data(), encoded.data(), lineSize, length,
                                          &encodedLength);
    vyrfuzz::Check(encodedLength >= 0 && encodedLength < room, "the encoding fits its room");
    vyrfuzz::Check(encoded[static_cast<size_t>(encodedLength)] == 0, "the encoding ends in zero");
    vyrfuzz::Check(std::strlen(reinterpret_cast<const char*>(encoded.data())) ==
                       static_cast<size_t>(encodedLength),
                   "the encoding holds no zero");
    std::vector<unsigned char> back(static_cast<size_t>(encodedLength) * 3 / 4 + 1);
    unsigned int backLength = 0;
    VyrEncodeBase64::DecodeBase64ToBinary(reinterpret_cast<const char*>(encoded.data()),
                                          back.data(), &backLength);
    back.resize(backLength);
    vyrfuzz::Check(back == input, "encoded bytes decode back to themselves");
    return 0;
}
