// The document file reader on arbitrary bytes: LoadFromMemory must answer true or false without
// crashing, hanging or leaking, and must read exactly what Load reads from a file of the same
// bytes.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "FuzzSupport.h"
#include "vyrbase/core/VyrBaseData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vyrfuzz::StartToolkit();
    VyrBaseData fromMemory(nullptr);
    const bool loaded = fromMemory.LoadFromMemory(data, size);
    const std::string described = vyrfuzz::Describe(fromMemory);

    vyrfuzz::MemoryFile file;
    vyrfuzz::Check(file.IsOk(), "a memory file can be made");
    {
        // The path reopens the same file: write the bytes through it.
        FILE* out = fopen(file.GetPath().utf8_str(), "wb");
        vyrfuzz::Check(out != nullptr, "the memory file opens by its path");
        vyrfuzz::Check(fwrite(data, 1, size, out) == size, "the bytes go into the memory file");
        fclose(out);
    }
    VyrBaseData fromFile(nullptr);
    vyrfuzz::Check(fromFile.Load(file.GetPath()) == loaded, "Load answers as LoadFromMemory");
    vyrfuzz::CheckSame(described, vyrfuzz::Describe(fromFile),
                       "Load reads what LoadFromMemory reads");
    return 0;
}
