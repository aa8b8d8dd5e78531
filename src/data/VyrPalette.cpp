#include "vyrbase/data/VyrPalette.h"

#include "vyrbase/core/VyrBaseData.h"

namespace {

const unsigned char kColours[][3] = {
    {213, 94, 0},     // vermilion
    {0, 114, 178},    // blue
    {0, 158, 115},    // bluish green
    {204, 121, 167},  // reddish purple
    {230, 159, 0},    // orange
    {86, 180, 233},   // sky blue
    {0, 0, 0},        // black
};
const int kCount = sizeof kColours / sizeof kColours[0];

}  // namespace

int VyrPalette::GetCount() {
    return kCount;
}

wxColour VyrPalette::GetColour(int n) {
    const unsigned char* c = kColours[n < 0 ? 0 : n % kCount];
    return wxColour(c[0], c[1], c[2]);
}

wxColour VyrPalette::GetNextColour(VyrBaseData* doc) {
    int count = 0;
    if (doc) {
        wxVyrListEntityNode* node = doc->GetFirstCourbeNode();
        while (node)
            if (doc->GetNextCourbe(&node))
                ++count;
    }
    return GetColour(count);
}
