// Where a recording's bytes come from: standard input, a regular file followed as it grows, a
// named pipe or a serial line. POSIX only (file descriptors, poll, inotify, termios): the
// library reads the bytes (VyrLiveTable) and never sees a descriptor.
#ifndef VYR_TOOLS_COMMON_LIVESOURCE_H
#define VYR_TOOLS_COMMON_LIVESOURCE_H

#include <string>
#include <sys/types.h>
#include <vector>

#include <wx/string.h>

namespace vyrtools {

class LiveSource {
public:
    enum Kind {
        kStandardInput,  // "-": read to its end
        kFile,           // a regular file: read, then followed as it grows
        kPipe,           // a named pipe (or another character device): read to its end
        kSerial,         // a terminal: set raw at the baud rate asked
    };
    enum Event {
        kNothing,  // nothing within the time
        kBytes,    // bytes were appended
        kEnd,      // the writer is gone (end of a pipe, of standard input, a serial line lost)
        kAgain,    // the file shrank or was replaced: its bytes start again from the beginning
        kFailed,   // reading failed (Reason says why)
    };

    // The serial line's speed when none is asked.
    static const int kDefaultBaud = 115200;

    LiveSource() = default;
    ~LiveSource();
    LiveSource(const LiveSource&) = delete;
    LiveSource& operator=(const LiveSource&) = delete;

    // Opens `path` ("-" for standard input). A named pipe's opening waits for its writer, as any
    // reader of a pipe does. False, with a reason a person can act on, for a path that cannot be
    // opened, a directory, a baud rate the line does not take, a terminal that cannot be set.
    bool Open(const wxString& path, int baud, wxString& reason);
    // Waits at most `waitMs` milliseconds (0: only what is there) for bytes and appends those
    // available, no more than `limit`, to `bytes`. A signal ends the wait early (kNothing).
    Event Read(int waitMs, std::string& bytes, size_t limit = size_t(1) << 20);

    Kind GetKind() const { return m_eKind; }
    // Why the last Read failed.
    const wxString& GetReason() const { return m_sReason; }
    // Whether a followed file wakes the reader through inotify (else it is looked at ten times a
    // second).
    bool IsWatched() const { return m_iWatch >= 0; }

    // Whether a baud rate is one a serial line takes (50 to 4000000, the standard steps).
    static bool IsBaudRate(int baud);
    // The serial ports of this machine ("/dev/ttyUSB0", "/dev/ttyACM0", "/dev/ttyS0"...): the
    // terminals that a device driver stands behind, a built-in port only when its hardware is
    // there.
    static std::vector<wxString> ListSerialPorts();

private:
    bool OpenFile(wxString& reason);
    Event ReadStream(int waitMs, std::string& bytes, size_t limit);
    Event ReadFile(int waitMs, std::string& bytes, size_t limit);
    Event Fail(const char* what);

    wxString m_sPath;
    Kind m_eKind = kStandardInput;
    int m_iFd = -1;
    bool m_bOwnFd = false;
    // A followed file: where the next byte is, which file it is, the inotify descriptor.
    off_t m_iOffset = 0;
    dev_t m_iDevice = 0;
    ino_t m_iInode = 0;
    int m_iWatch = -1;
    // A serial line's settings before ours, given back on closing.
    bool m_bTermiosSaved = false;
    std::vector<unsigned char> m_savedTermios;
    wxString m_sReason;
};

}  // namespace vyrtools

#endif
