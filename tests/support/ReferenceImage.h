// Compares a rendered picture with a reference PNG kept under tests/data/, so that a change in
// drawing shows up as a failing test.
//
//     EXPECT_TRUE(MatchesReference(image, "diagram/axes_basic.png"));
//
// Two pictures match when they have the same size and at most `maxFraction` of their pixels
// differ by more than `channelTolerance` in any of red, green and blue (anti-aliasing and font
// hinting may move a few pixels between machines; the defaults, 16 and 0.2 %, still see a grid
// of light grey lines or a doubled line width). When the pictures do not match, the
// rendered picture is written to the temporary directory as <name>.actual.png and the result
// says where.
//
// With the environment variable VYR_UPDATE_REFERENCES=1 the reference is (re)written from the
// rendered picture and the comparison succeeds; commit the new PNG after looking at it. A
// missing reference fails with a message that says so.
#ifndef VYR_TESTS_SUPPORT_REFERENCEIMAGE_H
#define VYR_TESTS_SUPPORT_REFERENCEIMAGE_H

#include <gtest/gtest.h>

#include <wx/colour.h>
#include <wx/image.h>
#include <wx/string.h>

// `relativePath` is relative to tests/data/.
::testing::AssertionResult MatchesReference(const wxImage& rendered, const wxString& relativePath,
                                            int channelTolerance = 16, double maxFraction = 0.002);

// An opaque image of this size filled with one colour.
wxImage MakeFilledImage(int width, int height, const wxColour& colour);

#endif
