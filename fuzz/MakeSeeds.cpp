// Writes the fuzz targets' seed corpora (fuzz/corpus/<target>/): small documents written by the
// library itself (the samples cut to a few points each, in the three encodings the reader
// knows), hand-made texts that reach the reader's special cases, and inputs of the base64 and
// report targets. Run it from the source tree's root after a change of the file format:
//     build/fuzz/vyr_fuzz_make_seeds fuzz/corpus
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <wx/image.h>
#include <wx/init.h>
#include <zlib.h>

#include "FuzzSupport.h"
#include "file/VyrJpegData.h"
#include "vyrbase/VyrBase.h"

namespace {

namespace fs = std::filesystem;

fs::path g_root;

void Put(const std::string& target, const std::string& name, const std::string& bytes) {
    const fs::path dir = g_root / target;
    fs::create_directories(dir);
    std::ofstream out(dir / name, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// A document seed goes to every target that reads documents.
void PutDocument(const std::string& name, const std::string& bytes) {
    for (const char* target : {"load", "roundtrip", "csv"})
        Put(target, name, bytes);
}

// The UTF-16LE text of a file Save wrote (after its mark).
std::wstring TextOf(const std::string& saved) {
    std::wstring text;
    for (size_t i = 2; i + 1 < saved.size(); i += 2)
        text.push_back(static_cast<wchar_t>(static_cast<unsigned char>(saved[i]) |
                                            static_cast<unsigned char>(saved[i + 1]) << 8));
    return text;
}

std::string Utf16(const std::wstring& text) {
    std::string bytes("\xFF\xFE", 2);
    for (wchar_t c : text) {
        bytes.push_back(static_cast<char>(c & 0xFF));
        bytes.push_back(static_cast<char>((c >> 8) & 0xFF));
    }
    return bytes;
}

std::string Utf8(const std::wstring& text) {
    return wxString(text).utf8_string();
}

std::string Latin1(const std::wstring& text) {
    std::string bytes;
    for (wchar_t c : text)
        bytes.push_back(static_cast<char>(c < 256 ? c : '?'));
    return bytes;
}

// The packed form of a report ("U", eight digits, a blank, letter pairs of the zlib stream).
std::string PackReport(const std::string& rtf) {
    uLongf size = compressBound(rtf.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(&packed[0]), &size,
             reinterpret_cast<const Bytef*>(rtf.data()), rtf.size());
    packed.resize(size);
    char head[16];
    std::snprintf(head, sizeof head, "U%08zu ", rtf.size());
    std::string text(head);
    for (unsigned char byte : packed) {
        text += static_cast<char>('A' + (byte & 15));
        text += static_cast<char>('A' + (byte >> 4));
    }
    return text;
}

// A sample cut to a few points per curve, its picture made small, a packed report added.
std::string SmallSample(const fs::path& path) {
    VyrBaseData doc(nullptr);
    if (!doc.Load(wxString::FromUTF8(path.string())))
        return std::string();
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = doc.GetNextCourbe(&node);
        c->SetSize(static_cast<int>(c->GetSize()) < 6 ? static_cast<int>(c->GetSize()) : 6);
    }
    node = doc.GetFirstImageRedyEntityNode();
    while (node) {
        VyrImageRedyEntity* picture = doc.GetNextImageRedyEntity(&node);
        wxImage image(8, 6);
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 8; ++x)
                image.SetRGB(x, y, static_cast<unsigned char>(x * 30), 90,
                             static_cast<unsigned char>(y * 40));
        picture->SetImage(image);
    }
    if (VyrCompteRendu* report = doc.GetCompteRenduEntity(false, nullptr))
        report->SetData(wxString::FromUTF8(PackReport("{\\rtf1 packed \"report\"}")));
    bool ok = false;
    return vyrfuzz::SaveToMemory(doc, &ok);
}

// Texts that reach the reader's special cases.
const wchar_t* const kHandMade[][2] = {
    {L"empty", L""},
    {L"blank", L"\r\n\r\n\t\r\n"},
    {L"key_first", L"\toid = 3\r\n[vecteur]\r\n\toid = 4\r\n"},
    {L"header_last", L"[Inconnu]\r\n\tk = 1\r\n[manipulation]\r\n"},
    {L"unknown_sections", L"[B]\r\n\tb = 1\r\n[Vecteur]\r\n\toid = 2\r\n[A]\r\n\ta = \"x\"\r\n"},
    {L"unclosed_quote",
     L"[courbe]\r\n\toid = 2\r\n\tcommentaire = \"never closed\r\nline\r\n\tvx = 3\r\n"},
    {L"unclosed_table", L"[vecteur]\r\n\toid = 3\r\n\tpoints = table 3 {\r\n\t1\t2\t3\r\n"},
    {L"one_line_table",
     L"[vecteur]\r\n\toid = 3\r\n\tpoints = table 1 {\r\n\t1,5\r\n\t}\r\n[courbe]\r\n\toid = "
     L"2\r\n\tvx = 3\r\n\tvy = 3\r\n\tlesdiagrammes = table 1 { 1 }\r\n\tcouleur = "
     L"16777217\r\n\tstyle_ex = \"1|3|2|2|0|0\"\r\n\tdiagramme = 1\r\n[manipulation]\r\n\toid = "
     L"1\r\n\tcourbes = table 1 {\r\n\t2\r\n\t}\r\n"},
    {L"escapes", L"[manipulation]\r\n\toid = 1\r\n\tnom = \"a \\\"b\\\" c\\\\\\\\d\te\"\r\n"},
    {L"missing_curve", L"[manipulation]\r\n\toid = 1\r\n\tcourbes = table 1 {\r\n\t99\r\n\t}\r\n"},
    {L"notes_by_name",
     L"[Annotation]\r\n\toid = 5\r\n\tnom = \"rectangle_annotation(1, 2)_C1\"\r\n\ttexte = "
     L"\"n\"\r\n\tindex = 1\r\n\tcurve = \"C1E1\"\r\n[Annotation]\r\n\toid = 6\r\n\tnom = "
     L"\"rectangle_titre\"\r\n\tdiagramme = 1\r\n\ttexte = \"T\"\r\n[vecteur]\r\n\toid = "
     L"3\r\n\tpoints = table 2 {\r\n\t1\t2\r\n\t}\r\n[courbe]\r\n\toid = 2\r\n\tnom = "
     L"\"C1\"\r\n\tvx = 3\r\n\tvy = 3\r\n[manipulation]\r\n\toid = 1\r\n\tnom = "
     L"\"E1\"\r\n\tcourbes = table 1 {\r\n\t2\r\n\t}\r\n"},
    {L"physio", L"[spirom]\r\n\toid = 4\r\n\tspacq = 3\r\n\tvi = 1,5\r\n\texp = \"x\"\r\n"},
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: vyr_fuzz_make_seeds <corpus directory>\n");
        return 2;
    }
    g_root = argv[1];
    wxInitializer toolkit;
    if (!toolkit.IsOk())
        return 1;
    wxInitAllImageHandlers();

    for (const char* sample : {"oscillation", "pendulum", "signal", "sound", "spectrum"}) {
        const std::string saved =
            SmallSample(fs::path(VYR_SOURCE_DIR) / "samples" / (std::string(sample) + ".vyr"));
        if (saved.empty()) {
            std::fprintf(stderr, "cannot read the sample %s\n", sample);
            return 1;
        }
        const std::wstring text = TextOf(saved);
        const std::string name(sample);
        PutDocument(name + "_utf16", saved);
        PutDocument(name + "_utf8_mark", "\xEF\xBB\xBF" + Utf8(text));
        // Without a mark the unit header alone makes the text UTF-8.
        PutDocument(name + "_utf8", Utf8(text));
        PutDocument(name + "_latin1", Latin1(text));
    }
    for (const auto& text : kHandMade) {
        const std::string name = wxString(text[0]).utf8_string();
        PutDocument(name, Utf16(text[1]));
        PutDocument(name + "_latin1", Latin1(text[1]));
    }
    PutDocument("big_endian", std::string("\xFE\xFF\0[\0v", 6));

    // Base64: a small picture's text, and bytes to encode (the first byte is the line size).
    wxImage image(4, 4);
    image.SetRGB(wxRect(0, 0, 4, 4), 200, 40, 10);
    Put("base64", "picture", VyrImageToBase64(image).utf8_string());
    Put("base64", "encode_76",
        std::string("\x4cHello, base64 line of exactly fifty-seven bytes!..."));
    Put("base64", "odd", "QUJD\r\nRA==\r\n$%^=");

    // Report: the first byte chooses a raw data text (even) or a payload to pack (odd).
    const std::string rtf = "{\\rtf1\\ansi a \"report\" \\par}";
    Put("report", "packed_text", "\x00" + PackReport(rtf));
    Put("report", "not_packed", std::string("\x02") + "{\\rtf1 plain}");
    Put("report", "bomb", std::string("\x04") + "U99999999 ABCDEFGHIJKLMNOP");
    Put("report", "payload_exact", std::string("\x01\x00\x10", 3) + rtf);
    Put("report", "payload_short", std::string("\x01\xFE\x07", 3) + rtf);
    Put("report", "payload_long", std::string("\x01\x05\x00", 3) + rtf);
    std::printf("seeds written under %s\n", argv[1]);
    return 0;
}
