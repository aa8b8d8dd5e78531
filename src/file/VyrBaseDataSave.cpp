// Saving a document file: UTF-16LE with its mark, the sections in their fixed order, then the
// sections the last load did not know. Also the writing helpers the application may call on
// their own (mark, text, escaped strings, curve style strings, a block of bytes to a file).
#include <cerrno>
#include <new>
#include <string>

#include <wx/file.h>
#include <wx/log.h>
#include <wx/strconv.h>

#include "file/VyrFileSink.h"
#include "file/VyrNumberText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/file/VyrSafeFile.h"

namespace {

typedef bool (VyrBaseData::*SectionWriter)(VyrTextWriter&);

const unsigned char kUnicodeMark[2] = {0xFF, 0xFE};

}  // namespace

bool VyrBaseData::WriteDocument(VyrFileSink& sink) {
    // The order is part of the format: units before the vectors that name them, vectors
    // before the curves, curves before the experiments; annotations and interval tools first,
    // bound to curves and diagrams once the whole file has been read.
    static const SectionWriter kWriters[] = {
        &VyrBaseData::SauveAnnotations,   &VyrBaseData::SauveOutilInterval,
        &VyrBaseData::SauveCompteRendu,   &VyrBaseData::SauveUnite,
        &VyrBaseData::SauveVecteur,       &VyrBaseData::SauveCourbe,
        &VyrBaseData::SauveSpirog,        &VyrBaseData::SauveSpiroExp,
        &VyrBaseData::SauveSpirom,        &VyrBaseData::SauveRespihomConfig,
        &VyrBaseData::SauveRespihomData,  &VyrBaseData::SauveSpiroMetaConfig,
        &VyrBaseData::SauveSpiroMetaData, &VyrBaseData::SauveExperience,
        &VyrBaseData::SauveGrille,        &VyrBaseData::SauveImageRedy,
    };

    m_mapVectorUnit.clear();
    if (!sink.Write(kUnicodeMark, sizeof kUnicodeMark))
        return false;
    VyrTextWriter out(sink);
    out.SetExactNumbers(m_bExactNumbers);
    for (SectionWriter writer : kWriters) {
        // A failing section stops the save: the sections after it are not written.
        if (!(this->*writer)(out) || !out.Flush())
            return false;
    }
    return SauveSectionInconnue(out) && out.Flush();
}

bool VyrBaseData::Save(const wxString& path) {
    // File operations answer false and show no message.
    wxLogNull noMessages;
    bool result = false;
    try {
        VyrFileSink sink;
        if (sink.Create(path)) {
            result = WriteDocument(sink);
            // Some file systems report lost data only when the file is closed.
            if (!sink.Close())
                result = false;
        }
    } catch (const std::bad_alloc&) {
        // The library has no exceptions of its own: memory that cannot be had fails the save
        // as a short write does (the partial file stays, as after any failed Save).
        result = false;
    }
    m_mapVectorUnit.clear();
    return result;
}

bool VyrBaseData::SaveSafely(const wxString& path) {
    try {
        VyrSafeFile file(path);
        return SaveSafely(file);
    } catch (const std::bad_alloc&) {
        m_mapVectorUnit.clear();
        return false;
    }
}

bool VyrBaseData::SaveSafely(VyrSafeFile& file) {
    wxLogNull noMessages;
    const bool result = file.WriteSink([this](VyrFileSink& sink) { return WriteDocument(sink); });
    m_mapVectorUnit.clear();
    return result;
}

bool VyrBaseData::WriteHeaderUnicode(wxFile& file) {
    VyrFileSink sink;
    sink.Attach(file.fd());
    return sink.Write(kUnicodeMark, sizeof kUnicodeMark);
}

bool VyrBaseData::WriteInFile(wxFile& file, wxString& text, wxMBConv* conv) {
    VyrFileSink sink;
    sink.Attach(file.fd());
    if (conv) {
        // Through a converter the outcome is not checked.
        const wxScopedCharBuffer bytes = text.mb_str(*conv);
        if (bytes.length() > 0)
            sink.Write(bytes.data(), bytes.length());
        return true;
    }
    std::string bytes;
    bytes.reserve(text.length() * 2);
    VyrTextWriter::AppendUtf16(bytes, text.wc_str(), text.length());
    if (bytes.empty())
        return true;
    return sink.Write(bytes.data(), bytes.size());
}

wxString VyrBaseData::GetStringSave(const wxString& text) {
    // Only double quotes are escaped: backslashes, line breaks and tabs are written as they
    // are (the reader, which also halves doubled backslashes, is kept as it is).
    wxString escaped;
    escaped.reserve(text.length());
    for (wxString::const_iterator it = text.begin(); it != text.end(); ++it) {
        if (*it == L'"')
            escaped += L'\\';
        escaped += *it;
    }
    return escaped;
}

wxString VyrBaseData::GetStringStyle(VyrCourbe* /*c*/) {
    return L"1";
}

wxString VyrBaseData::GetStringStyleEx(VyrCourbe* c) {
    if (!c)
        return wxString();
    // "%d|%x|%x|%x|%x|%x": 1, point style, line style, twice the width minus 2, 0, 0. A width
    // read from a file can be as large as 2^30: the field wraps as the int would, computed
    // without overflowing.
    const int widthField = static_cast<int>(static_cast<unsigned>(c->GetWidth()) * 2u - 2u);
    const int fields[6] = {1, c->GetStylePoint(), c->GetStyleLiaison(), widthField, 0, 0};
    wxString text;
    char buf[VyrNumberText::kMaxChars];
    for (int i = 0; i < 6; ++i) {
        if (i > 0)
            text += L'|';
        const size_t n = i == 0 ? VyrNumberText::FormatInt(buf, fields[i])
                                : VyrNumberText::FormatHex(buf, fields[i]);
        // ASCII digits, widened one by one (the toolkit's converters lose their buffer when
        // memory runs out).
        for (size_t k = 0; k < n; ++k)
            text += static_cast<wchar_t>(buf[k]);
    }
    return text;
}

bool VyrBaseData::SauveSectionInconnue(wxFile& file) {
    VyrFileSink sink;
    sink.Attach(file.fd());
    VyrTextWriter out(sink);
    return SauveSectionInconnue(out) && out.Flush();
}

bool VyrBaseData::SauveSectionInconnue(VyrTextWriter& out) {
    // Each as it was read, then a line break, in the order they were read.
    for (size_t i = 0; i < m_asUnknownSections.GetCount(); ++i)
        out.Text(m_asUnknownSections[i]).EndLine();
    return out.IsOk();
}

void VyrBaseData::SaveDataInFile(const wchar_t* path, const unsigned char* data,
                                 unsigned int size) {
    if (!path)
        return;
    VyrFileSink sink;
    if (!sink.Create(path))
        return;
    if (data && size > 0)
        sink.Write(data, size);
    sink.Close();
}
