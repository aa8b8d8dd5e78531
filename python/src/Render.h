// Pictures of a document's diagram: PNG bytes in memory (for notebooks), or a file whose format
// follows its extension.
#ifndef VYR_PYTHON_RENDER_H
#define VYR_PYTHON_RENDER_H

#include <string>
#include <vector>

#include <wx/string.h>

#include "PictureOptions.h"

class VyrBaseData;

struct RenderSize {
    int width;
    int height;
    double scale;
};

// Throws ValueError for a size, scale or diagram index the pictures do not take.
void CheckRenderArguments(const RenderSize& size, int diagram);

// The extensions a picture file may have, as "png, svg" (for messages and docs).
std::string PictureExtensions();

// The PNG picture of diagram `diagram` of `doc`. Throws RuntimeError when painting fails.
// `look` holds for this picture only: the diagram's options and main unit are put back after.
// Throws ValueError for a main unit that none of the diagram's curves has.
std::vector<unsigned char> RenderPng(VyrBaseData& doc, int diagram, const RenderSize& size,
                                     const PictureOptions& look);

// Writes the picture to `path` in the format of its extension, atomically (an existing file is
// replaced only by a complete picture). Throws ValueError for an extension without a format,
// OSError when the file cannot be written.
void RenderToFile(VyrBaseData& doc, int diagram, const RenderSize& size, const PictureOptions& look,
                  const wxString& path);

#endif
