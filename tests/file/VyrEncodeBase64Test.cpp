#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <wx/filename.h>

#include "vyrbase/file/VyrEncodeBase64.h"

namespace {

std::string Encode(const std::vector<unsigned char>& in, int lineSize) {
    std::vector<unsigned char> out(
        VyrEncodeBase64::GetSizeEncode64(lineSize, static_cast<int>(in.size())));
    int length = -1;
    VyrEncodeBase64::EncodeBinaryToBase64(const_cast<unsigned char*>(in.data()), out.data(),
                                          lineSize, static_cast<int>(in.size()), &length);
    EXPECT_GE(length, 0);
    EXPECT_LT(static_cast<size_t>(length), out.size());
    EXPECT_EQ(out[length], 0);
    return std::string(out.begin(), out.begin() + length);
}

std::vector<unsigned char> Decode(const std::string& text) {
    std::vector<unsigned char> out(text.size() * 3 / 4 + 3);
    unsigned int length = 12345;
    VyrEncodeBase64::DecodeBase64ToBinary(text.c_str(), out.data(), &length);
    EXPECT_LE(length, out.size());
    out.resize(length);
    return out;
}

std::string WithoutLineBreaks(const std::string& s) {
    std::string r;
    for (char c : s)
        if (c != '\r' && c != '\n')
            r += c;
    return r;
}

bool HaveTool(const char* tool) {
    const std::string command = std::string("command -v ") + tool + " >/dev/null 2>&1";
    return std::system(command.c_str()) == 0;
}

std::string RunCapture(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return output;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0)
        output.append(buffer, n);
    pclose(pipe);
    return output;
}

void WriteBytes(const wxString& path, const void* data, size_t size) {
    FILE* f = fopen(path.utf8_str(), "wb");
    ASSERT_NE(f, nullptr);
    if (size)
        fwrite(data, 1, size, f);
    fclose(f);
}

}  // namespace

TEST(VyrEncodeBase64, FiftySevenBytesMakeOneFullLineEndingWithBreak) {
    std::vector<unsigned char> in(57, 0xA5);
    const std::string text = Encode(in, 76);
    ASSERT_EQ(text.size(), 78u);
    EXPECT_EQ(text.substr(76), "\r\n");
    EXPECT_EQ(text.find('\r'), 76u);
}

TEST(VyrEncodeBase64, FiftyEightBytesAddAShortPaddedLineWithoutBreak) {
    std::vector<unsigned char> in(58, 0x3C);
    const std::string text = Encode(in, 76);
    ASSERT_EQ(text.size(), 76u + 2u + 4u);
    EXPECT_EQ(text.substr(76, 2), "\r\n");
    const std::string last = text.substr(78);
    EXPECT_EQ(last.size(), 4u);
    EXPECT_EQ(last.substr(2), "==");
    EXPECT_NE(last[1], '=');
}

TEST(VyrEncodeBase64, PaddingReplacesOnlyPaddingCharacters) {
    EXPECT_EQ(Encode({'M'}, 76), "TQ==");
    EXPECT_EQ(Encode({'M', 'a'}, 76), "TWE=");
    EXPECT_EQ(Encode({'M', 'a', 'n'}, 76), "TWFu");
    EXPECT_EQ(Encode({}, 76), "");
}

TEST(VyrEncodeBase64, LineSizeNotMultipleOfFourBreaksAfterTheGroupThatFillsIt) {
    // 9 bytes = 12 characters; line size 10 breaks after the third group (12 >= 10).
    std::vector<unsigned char> in(9, 0);
    EXPECT_EQ(Encode(in, 10), "AAAAAAAAAAAA\r\n");
    EXPECT_EQ(Encode(in, 0), "AAAAAAAAAAAA");
}

TEST(VyrEncodeBase64, GetSizeEncode64LeavesRoomForBreaksAndTerminator) {
    EXPECT_EQ(VyrEncodeBase64::GetSizeEncode64(76, 0), 10);
    EXPECT_EQ(VyrEncodeBase64::GetSizeEncode64(76, 57), 76 + 2 * (1 + 5));
    EXPECT_EQ(VyrEncodeBase64::GetSizeEncode64(76, 58), 80 + 2 * (1 + 5));
    EXPECT_EQ(VyrEncodeBase64::GetSizeEncode64(4, 3), 4 + 2 * (1 + 5));
    EXPECT_EQ(VyrEncodeBase64::GetSizeEncode64(0, 3), 4 + 10);
    // A negative length is sized as nothing.
    EXPECT_EQ(VyrEncodeBase64::GetSizeEncode64(76, -12), 10);
    // Line size 4 is the worst case for breaks: the buffer must still hold them all.
    std::vector<unsigned char> in(300, 7);
    EXPECT_EQ(Encode(in, 4).size(), 400u + 200u);
}

TEST(VyrEncodeBase64, EncodeblockAndDecodeblockAreInverse) {
    const unsigned char in[3] = {0xFF, 0x00, 0x81};
    unsigned char chars[4];
    VyrEncodeBase64::Encodeblock64(in, chars, 3);
    EXPECT_EQ(std::string(chars, chars + 4), "/wCB");
    unsigned char values[4] = {63, 48, 2, 1};
    unsigned char back[3];
    VyrEncodeBase64::Decodeblock64(values, back);
    EXPECT_EQ(back[0], 0xFF);
    EXPECT_EQ(back[1], 0x00);
    EXPECT_EQ(back[2], 0x81);
}

TEST(VyrEncodeBase64, DecoderSkipsBreaksPaddingAndCharactersOutsideTheAlphabet) {
    const std::vector<unsigned char> expected = {'M', 'a', 'n', 'M'};
    EXPECT_EQ(Decode("TW\r\nFu TQ=="), expected);
    // Inside the table's span but not in the alphabet: ':', '@', '[', '`', '='.
    EXPECT_EQ(Decode("T:W@F[u`T=Q"), expected);
    // Outside the span on both sides, and bytes above 127.
    EXPECT_EQ(Decode("\x01T~W\x7f\xc3\xa9"
                     "Fu*TQ{"),
              expected);
}

TEST(VyrEncodeBase64, DecoderLastGroupGivesOneByteLessThanItsCharacters) {
    EXPECT_EQ(Decode("TWE"), (std::vector<unsigned char>{'M', 'a'}));
    EXPECT_EQ(Decode("TQ"), (std::vector<unsigned char>{'M'}));
    EXPECT_EQ(Decode("TWFuT").size(), 3u);
    EXPECT_TRUE(Decode("").empty());
}

TEST(VyrEncodeBase64, EveryAlphabetCharacterDecodesToItsValue) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int value = 0; value < 64; ++value) {
        // value in the first six bits of the first byte.
        const std::string text = std::string(1, alphabet[value]) + "A";
        const std::vector<unsigned char> out = Decode(text);
        ASSERT_EQ(out.size(), 1u);
        EXPECT_EQ(out[0], value << 2) << alphabet[value];
    }
}

TEST(VyrEncodeBase64, NullBuffersGiveNothing) {
    int length = 99;
    unsigned char out[16];
    VyrEncodeBase64::EncodeBinaryToBase64(nullptr, out, 76, 5, &length);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(out[0], 0);
    unsigned char in[3] = {1, 2, 3};
    VyrEncodeBase64::EncodeBinaryToBase64(in, out, 76, -4, &length);
    EXPECT_EQ(length, 0);
    VyrEncodeBase64::EncodeBinaryToBase64(in, nullptr, 76, 3, &length);
    EXPECT_EQ(length, 0);
    unsigned int decoded = 77;
    VyrEncodeBase64::DecodeBase64ToBinary(nullptr, out, &decoded);
    EXPECT_EQ(decoded, 0u);
    VyrEncodeBase64::DecodeBase64ToBinary("TWFu", nullptr, &decoded);
    VyrEncodeBase64::DecodeBase64ToBinary("TWFu", out, nullptr);
}

TEST(VyrEncodeBase64, AgreesWithCoreutilsOnEveryLengthUpTo300) {
    if (!HaveTool("base64"))
        GTEST_SKIP() << "coreutils base64 not installed";
    const wxString input = wxFileName::CreateTempFileName("vyrb64in");
    const wxString ours = wxFileName::CreateTempFileName("vyrb64ours");
    ASSERT_FALSE(input.empty());
    ASSERT_FALSE(ours.empty());
    std::mt19937 random(20240611);
    for (int n = 0; n <= 300; ++n) {
        std::vector<unsigned char> bytes(n);
        for (unsigned char& b : bytes)
            b = static_cast<unsigned char>(random());
        WriteBytes(input, bytes.data(), bytes.size());

        const std::string text = Encode(bytes, 76);
        const std::string theirs = RunCapture("base64 -w0 '" + input.ToStdString() + "'");
        ASSERT_EQ(WithoutLineBreaks(text), theirs) << "length " << n;

        // The tool's own wrapping (LF every 76 characters) decodes to the input here.
        const std::string wrapped = RunCapture("base64 '" + input.ToStdString() + "'");
        ASSERT_EQ(Decode(wrapped), bytes) << "length " << n;

        // And the tool decodes ours once the CR LF breaks are taken out.
        const std::string flat = WithoutLineBreaks(text);
        WriteBytes(ours, flat.data(), flat.size());
        const std::string decoded = RunCapture("base64 -d '" + ours.ToStdString() + "'");
        ASSERT_EQ(std::vector<unsigned char>(decoded.begin(), decoded.end()), bytes)
            << "length " << n;
    }
    wxRemoveFile(input);
    wxRemoveFile(ours);
}
