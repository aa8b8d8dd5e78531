// vyr record: measurements recorded as they arrive from standard input, a growing file, a named
// pipe or a serial line, saved safely every few seconds and at the end.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include <wx/filename.h>

#include "Arguments.h"
#include "AtomicWrite.h"
#include "CliCommon.h"
#include "Commands.h"
#include "LiveSource.h"
#include "Recording.h"
#include "TableOptions.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/file/VyrTableImport.h"

namespace vyr {

namespace {

volatile std::sig_atomic_t g_stopSignal = 0;

void OnStopSignal(int signal) {
    g_stopSignal = signal;
}

// SIGINT and SIGTERM end the recording as its end would: the waits return (no SA_RESTART) and
// the loop saves and exits 0.
void CatchStopSignals() {
    struct sigaction action = {};
    action.sa_handler = &OnStopSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

int Usage(const std::string& error) {
    Complain("record", wxString::FromUTF8(error.c_str()));
    return kExitUsage;
}

// A number of seconds (or rows) given to an option: finite, not negative, and above zero unless
// `zeroAllowed`.
bool ReadAmount(const std::string& text, bool zeroAllowed, double& value) {
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && value == value && value >= 0 && value < 1e9 &&
           (zeroAllowed || value > 0);
}

int ListPorts() {
    const std::vector<wxString> ports = vyrtools::LiveSource::ListSerialPorts();
    for (const wxString& port : ports)
        std::printf("%s\n", static_cast<const char*>(port.utf8_str()));
    if (ports.empty())
        std::fprintf(stderr, "vyr: record: no serial port found\n");
    return kExitOk;
}

}  // namespace

int RunRecord(const Args& args) {
    const std::vector<std::string> tableOptions = vyrtools::TableOptionNames();
    std::set<std::string> valued(tableOptions.begin(), tableOptions.end());
    for (const char* option :
         {"-o", "--output", "--rows", "--seconds", "--idle", "--checkpoint", "--baud"})
        valued.insert(option);
    Arguments parsed({"--force", "--list-ports"}, valued);
    std::string error;
    if (!parsed.Parse(args, error))
        return Usage(error);
    if (parsed.Has("--list-ports"))
        return parsed.Operands().empty() ? ListPorts() : Usage("--list-ports takes no source");
    if (parsed.Operands().size() != 1)
        return Usage("needs one source: -, a file, a named pipe or a serial device");
    VyrTableImport settings;
    if (!vyrtools::ApplyTableOptions(
            [&parsed](const std::string& name, std::string& text) {
                text = parsed.Value(name);
                return parsed.Has(name);
            },
            settings, error))
        return Usage(error);

    vyrtools::Recording::Limits limits;
    double value = 0;
    if (parsed.Has("--rows")) {
        if (!ReadAmount(parsed.Value("--rows"), false, value) ||
            value != static_cast<size_t>(value))
            return Usage("--rows wants a number of rows above 0");
        limits.rows = static_cast<size_t>(value);
    }
    if (parsed.Has("--seconds")) {
        if (!ReadAmount(parsed.Value("--seconds"), false, value))
            return Usage("--seconds wants a duration in seconds above 0");
        limits.seconds = value;
    }
    if (parsed.Has("--idle")) {
        if (!ReadAmount(parsed.Value("--idle"), false, value))
            return Usage("--idle wants a duration in seconds above 0");
        limits.idle = value;
    }
    double checkpoint = 5.0;
    if (parsed.Has("--checkpoint") && !ReadAmount(parsed.Value("--checkpoint"), true, checkpoint))
        return Usage("--checkpoint wants seconds between saves (0: only at the end)");
    int baud = vyrtools::LiveSource::kDefaultBaud;
    if (parsed.Has("--baud")) {
        if (!ReadAmount(parsed.Value("--baud"), false, value) ||
            !vyrtools::LiveSource::IsBaudRate(static_cast<int>(value)) ||
            value != static_cast<int>(value))
            return Usage("--baud wants a baud rate of a serial line (9600, 115200...)");
        baud = static_cast<int>(value);
    }

    const wxString source = wxString::FromUTF8(parsed.Operands()[0].c_str());
    const std::string output = parsed.Value("-o", parsed.Value("--output"));
    if (output == kStandardOutput)
        return Usage("a recording is saved as it goes: give -o OUT.vyr, not -o -");
    const wxString target = output.empty() ? vyrtools::Recording::SourceName(source) + ".vyr"
                                           : wxString::FromUTF8(output.c_str());
    if (source != "-" && IsSameFile(source, target))
        return Usage("the output would replace the source: give -o OUT.vyr");
    if (output.empty())
        if (int code = CheckDefaultOutput(target, parsed.Has("--force")))
            return code;

    // Told now rather than after an hour of recording: the output's folder must take files.
    {
        const wxFileName output(target);
        const wxString folder = output.GetPath().empty() ? wxString(".") : output.GetPath();
        if (wxFileName::DirExists(target) || !wxFileName::DirExists(folder) ||
            !wxFileName::IsDirWritable(folder)) {
            Complain(target, wxFileName::DirExists(target) ? "cannot write: Is a directory"
                             : !wxFileName::DirExists(folder)
                                 ? "cannot write: No such file or directory"
                                 : "cannot write: Permission denied");
            return kExitOutput;
        }
    }

    VyrBaseData doc(nullptr);
    // Every number goes into the document as the source gave it, not rounded to six digits.
    doc.SetExactNumbers(true);
    vyrtools::Recording recording(doc, settings, limits);
    CatchStopSignals();
    wxString reason;
    if (!recording.Open(source, baud, reason)) {
        Complain(source, reason);
        return kExitInput;
    }

    typedef vyrtools::Recording::Clock Clock;
    Clock::time_point lastSave = Clock::now();
    size_t savedRows = 0;
    vyrtools::Recording::State state = vyrtools::Recording::kRecording;
    while (g_stopSignal == 0 && state == vyrtools::Recording::kRecording) {
        state = recording.Step(200);
        const Clock::time_point now = Clock::now();
        if (checkpoint > 0 && recording.GetRowCount() != savedRows &&
            std::chrono::duration<double>(now - lastSave).count() >= checkpoint) {
            // A checkpoint that fails (a full disk) is told and the recording goes on: the
            // next one, or the end, may succeed.
            if (!vyrtools::SaveDocument(target, doc, reason))
                Complain(target, reason);
            else
                savedRows = recording.GetRowCount();
            lastSave = now;
        }
    }
    if (g_stopSignal != 0)
        recording.Drain();
    const double seconds = recording.GetElapsed();
    const size_t rows = recording.GetRowCount();
    if (rows == 0) {
        Complain(source, state == vyrtools::Recording::kFailed
                             ? recording.GetReason()
                             : wxString("nothing recorded: no row of numbers arrived"));
        return state == vyrtools::Recording::kFailed && recording.IsSourceFailure() ? kExitInput
                                                                                    : kExitFormat;
    }
    if (int code = SaveDocument(target, doc))
        return code;
    if (state == vyrtools::Recording::kFailed) {
        Complain(source, recording.GetReason() +
                             wxString::Format(" (the %zu row(s) before were saved)", rows));
        return recording.IsSourceFailure() ? kExitInput : kExitFormat;
    }
    const char* why = g_stopSignal == SIGINT    ? "interrupted"
                      : g_stopSignal == SIGTERM ? "terminated"
                                                : recording.GetEndReason();
    std::printf("%s: %zu row(s), %zu skipped line(s), %.1f s, %.0f rows/s (%s)\n",
                static_cast<const char*>(target.utf8_str()), rows, recording.GetSkippedCount(),
                seconds, seconds > 0 ? rows / seconds : 0.0, why);
    return kExitOk;
}

}  // namespace vyr
