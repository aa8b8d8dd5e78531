// The report's packed data. The first byte chooses the input's form:
// - even: the rest is the "data" text itself (ISO-8859-1), unpacked as read from a file;
// - odd: the rest is a payload that is deflated and written in the packed form, with a declared
//   length off the true one by the second byte (as a signed number), and white space sprinkled
//   in by the third. Unpacking must give back the payload, cut to the declared length when that
//   is shorter; a declared length longer than the stream yields the whole payload.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include <zlib.h>

#include "FuzzSupport.h"
#include "file/VyrPackedReport.h"

namespace {

wxString Latin1(const uint8_t* data, size_t size) {
    std::wstring text;
    text.reserve(size);
    for (size_t i = 0; i < size; ++i)
        text.push_back(static_cast<wchar_t>(data[i]));
    return wxString(text);
}

// The packed form of `payload` with `declared` as its length, a blank every `spacing` letters.
wxString Pack(const std::string& payload, unsigned long declared, unsigned spacing) {
    uLongf packedSize = compressBound(payload.size());
    std::string packed(packedSize, '\0');
    vyrfuzz::Check(compress(reinterpret_cast<Bytef*>(&packed[0]), &packedSize,
                            reinterpret_cast<const Bytef*>(payload.data()), payload.size()) == Z_OK,
                   "zlib packs the payload");
    packed.resize(packedSize);
    char head[16];
    std::snprintf(head, sizeof head, "U%08lu ", declared);
    wxString text(head);
    size_t letters = 0;
    for (unsigned char byte : packed) {
        for (int half : {byte & 15, byte >> 4}) {
            text += static_cast<char>('A' + half);
            if (spacing > 0 && ++letters % spacing == 0)
                text += (letters / spacing) % 2 ? "\r\n" : " ";
        }
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vyrfuzz::StartToolkit();
    if (size == 0 || size > (1u << 20))
        return 0;
    std::string bytes;
    if (data[0] % 2 == 0) {
        const wxString text = Latin1(data + 1, size - 1);
        if (VyrUnpackReportBytes(text, &bytes))
            vyrfuzz::Check(!bytes.empty(), "an unpacked report holds bytes");
        else
            vyrfuzz::Check(bytes.empty(), "a refused report yields no bytes");
        VyrRtfFromPackedReport(text);
        return 0;
    }
    if (size < 3)
        return 0;
    const std::string payload(reinterpret_cast<const char*>(data + 3), size - 3);
    const long offset = static_cast<signed char>(data[1]);
    const long declaredSigned = static_cast<long>(payload.size()) + offset;
    if (declaredSigned <= 0 || declaredSigned > 99999999)
        return 0;
    const unsigned long declared = static_cast<unsigned long>(declaredSigned);
    const bool unpacked = VyrUnpackReportBytes(Pack(payload, declared, data[2] % 64), &bytes);
    vyrfuzz::Check(unpacked, "a whole zlib stream unpacks");
    const size_t expected = declared < payload.size() ? declared : payload.size();
    vyrfuzz::Check(bytes == payload.substr(0, expected),
                   "unpacking gives the payload, cut to the declared length");
    return 0;
}
