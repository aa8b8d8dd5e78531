// The report section "[compte_rendu]": the application's packed copy of the report, kept as it
// is read, and the report as RTF.
#include "file/VyrPackedReport.h"
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCompteRendu.h"

namespace {

enum ReportKey { kReportOid, kReportData, kReportRtf };
const wchar_t* const kReportKeys[] = {L"oid", L"data", L"rtf"};

// RTF is full of double quotes; the file carries them as this character instead.
const wchar_t kQuoteStandIn = L'\u00A4';

}  // namespace

bool VyrBaseData::SauveCompteRendu(VyrTextWriter& out) {
    VyrCompteRendu* report = GetCompteRenduEntity(false, nullptr);
    if (!report)
        return true;
    out.Header(L"compte_rendu").LineInt(L"oid", report->GetOid());
    if (!report->GetData().empty())
        out.LineString(L"data", report->GetData());
    wxString rtf = report->GetRtf();
    rtf.Replace(L"\"", wxString(kQuoteStandIn));
    out.LineString(L"rtf", rtf);
    // Kept: the report writer answers true whatever its writes did (the next writer, or the
    // final flush, notices a short write).
    return true;
}

wxString VyrBaseData::ParseReport() {
    VyrCompteRendu* report = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int key = VyrReadText::MatchKey(line, kReportKeys);
        if (key == kReportOid) {
            report = static_cast<VyrCompteRendu*>(
                CreateEntity(VYR_KIND_COMPTE_RENDU, VyrReadText::IntValue(line), nullptr));
            continue;
        }
        if (key < 0)
            continue;
        wxString text;
        ReadQuoted(line, text);
        if (!report)
            continue;
        if (key == kReportData) {
            // The packed copy is kept as read; its RTF, when it unpacks to one, is the report's
            // until an "rtf" line (written after "data") replaces it.
            report->SetData(text);
            const wxString rtf = VyrRtfFromPackedReport(text);
            if (!rtf.empty())
                report->SetRtf(rtf);
        } else {
            text.Replace(wxString(kQuoteStandIn), L"\"");
            report->SetRtf(text);
        }
    }
    return header;
}
