// Load, save, load again: a document the library wrote always loads, and once its values have
// gone through the file's number formats (the first save) a further save and load of a
// well-formed document (vyrfuzz::IsWellFormed) without unknown sections changes nothing.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "vyrbase/core/VyrBaseData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vyrfuzz::StartToolkit();
    VyrBaseData first(nullptr);
    if (!first.LoadFromMemory(data, size))
        return 0;
    bool ok = false;
    const std::string saved = vyrfuzz::SaveToMemory(first, &ok);
    vyrfuzz::Check(ok, "a loaded document saves");

    VyrBaseData second(nullptr);
    vyrfuzz::Check(second.LoadFromMemory(saved.data(), saved.size()), "a saved document loads");
    const std::string savedAgain = vyrfuzz::SaveToMemory(second, &ok);
    vyrfuzz::Check(ok, "a reloaded document saves");

    VyrBaseData third(nullptr);
    vyrfuzz::Check(third.LoadFromMemory(savedAgain.data(), savedAgain.size()),
                   "a document saved twice loads");
    // Kept sections change from one save to the next (see Describe); one whose header is a lone
    // "[" can even turn into a known section ("[\noutil_Interval]" is read back as "[" and
    // "outil_Interval]", then written as "[outil_Interval]").
    if (!vyrfuzz::IsWellFormed(second) || !second.GetUnknownSections().IsEmpty())
        return 0;
    vyrfuzz::CheckSame(vyrfuzz::Describe(second, false), vyrfuzz::Describe(third, false),
                       "a second save and load gives the same document");
    return 0;
}
