// The sources of a recording, on POSIX descriptors. A followed file is watched with inotify:
// the kernel wakes the reader as soon as the logger writes (a 2 s or 1 s timer would show rows
// that late) and costs nothing while the file rests; the toolkit's file watcher would do the
// same through an event loop that the command-line tool does not run. Where inotify cannot be
// had (no instances left, a file system without it), the file is looked at ten times a second.
// Serial lines are set up with termios, which every POSIX system has: raw bytes, the baud rate
// asked, no echo and no line discipline.
#include "LiveSource.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>

#include <wx/filename.h>

namespace vyrtools {

namespace {

struct BaudStep {
    int baud;
    speed_t speed;
};

const BaudStep kBaudSteps[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000},
    {1500000, B1500000}, {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000},
    {3500000, B3500000}, {4000000, B4000000},
};

bool SpeedOf(int baud, speed_t& speed) {
    for (const BaudStep& step : kBaudSteps)
        if (step.baud == baud) {
            speed = step.speed;
            return true;
        }
    return false;
}

wxString SystemReason(int error) {
    return wxString::FromUTF8(std::strerror(error));
}

// Waits for `fd` to become readable, or for the time; false on a signal or nothing.
bool WaitReadable(int fd, int waitMs) {
    pollfd p{fd, POLLIN, 0};
    const int ready = poll(&p, 1, waitMs);
    return ready > 0;
}

}  // namespace

LiveSource::~LiveSource() {
    if (m_bTermiosSaved && m_iFd >= 0) {
        termios saved;
        std::memcpy(&saved, m_savedTermios.data(), sizeof saved);
        tcsetattr(m_iFd, TCSANOW, &saved);
    }
    if (m_iWatch >= 0)
        close(m_iWatch);
    if (m_bOwnFd && m_iFd >= 0)
        close(m_iFd);
}

bool LiveSource::IsBaudRate(int baud) {
    speed_t speed;
    return SpeedOf(baud, speed);
}

bool LiveSource::Open(const wxString& path, int baud, wxString& reason) {
    m_sPath = path;
    if (path == "-") {
        m_eKind = kStandardInput;
        m_iFd = STDIN_FILENO;
        m_bOwnFd = false;
        return true;
    }
    speed_t speed;
    if (!SpeedOf(baud, speed)) {
        reason = wxString::Format("%d is no baud rate of a serial line", baud);
        return false;
    }
    struct stat st;
    const wxScopedCharBuffer name = path.fn_str();
    if (stat(name, &st) != 0) {
        reason = "cannot open: " + SystemReason(errno);
        return false;
    }
    if (S_ISDIR(st.st_mode)) {
        reason = "cannot open: Is a directory";
        return false;
    }
    if (S_ISREG(st.st_mode)) {
        m_eKind = kFile;
        return OpenFile(reason);
    }
    // A pipe's opening waits for a writer; a terminal's must not wait for a modem's carrier.
    const bool fifo = S_ISFIFO(st.st_mode);
    // A signal while it waits (the user gave up) fails the opening.
    int fd = open(name, fifo ? O_RDONLY | O_CLOEXEC : O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0 && !fifo && (errno == EACCES || errno == EROFS))
        fd = open(name, O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        reason = "cannot open: " + SystemReason(errno);
        return false;
    }
    m_iFd = fd;
    m_bOwnFd = true;
    m_eKind = kPipe;
    if (!fifo && isatty(fd)) {
        m_eKind = kSerial;
        termios tio;
        if (tcgetattr(fd, &tio) != 0) {
            reason = "cannot set the serial line: " + SystemReason(errno);
            return false;
        }
        m_savedTermios.assign(reinterpret_cast<unsigned char*>(&tio),
                              reinterpret_cast<unsigned char*>(&tio) + sizeof tio);
        m_bTermiosSaved = true;
        cfmakeraw(&tio);
        tio.c_cflag |= CLOCAL | CREAD;
        tio.c_cc[VMIN] = 1;
        tio.c_cc[VTIME] = 0;
        if (cfsetispeed(&tio, speed) != 0 || cfsetospeed(&tio, speed) != 0 ||
            tcsetattr(fd, TCSANOW, &tio) != 0) {
            reason = "cannot set the serial line: " + SystemReason(errno);
            return false;
        }
    }
    return true;
}

bool LiveSource::OpenFile(wxString& reason) {
    const int fd = open(m_sPath.fn_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        reason = "cannot open: " + SystemReason(errno);
        return false;
    }
    struct stat st;
    if (fstat(fd, &st) != 0) {
        reason = "cannot read: " + SystemReason(errno);
        close(fd);
        return false;
    }
    if (m_bOwnFd && m_iFd >= 0)
        close(m_iFd);
    m_iFd = fd;
    m_bOwnFd = true;
    m_iOffset = 0;
    m_iDevice = st.st_dev;
    m_iInode = st.st_ino;
    if (m_iWatch < 0) {
        // The directory is watched, not the file: a logger that writes a new file and renames
        // it over the old one is seen as well as one that appends.
        const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (watch >= 0) {
            wxFileName file(m_sPath);
            file.MakeAbsolute();
            if (inotify_add_watch(watch, file.GetPath().fn_str(),
                                  IN_MODIFY | IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_TO | IN_DELETE |
                                      IN_ATTRIB) >= 0)
                m_iWatch = watch;
            else
                close(watch);
        }
    }
    return true;
}

LiveSource::Event LiveSource::Fail(const char* what) {
    m_sReason = wxString(what) + ": " + SystemReason(errno);
    return kFailed;
}

LiveSource::Event LiveSource::Read(int waitMs, std::string& bytes, size_t limit) {
    if (m_iFd < 0) {
        m_sReason = "not open";
        return kFailed;
    }
    return m_eKind == kFile ? ReadFile(waitMs, bytes, limit) : ReadStream(waitMs, bytes, limit);
}

LiveSource::Event LiveSource::ReadStream(int waitMs, std::string& bytes, size_t limit) {
    if (!WaitReadable(m_iFd, waitMs))
        return kNothing;
    const size_t before = bytes.size();
    char buffer[65536];
    // Standard input and pipes may block: every read but the first waits for nothing.
    for (bool first = true; bytes.size() - before < limit; first = false) {
        if (!first && !WaitReadable(m_iFd, 0))
            break;
        const size_t want = std::min(sizeof buffer, limit - (bytes.size() - before));
        const ssize_t got = read(m_iFd, buffer, want);
        if (got > 0) {
            bytes.append(buffer, static_cast<size_t>(got));
            continue;
        }
        if (got < 0 && errno == EINTR)
            break;
        if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            break;
        // The end of a pipe; a serial line whose other side went away answers EIO.
        if (got == 0 || (m_eKind == kSerial && errno == EIO)) {
            if (bytes.size() > before)
                break;  // the end is told by the next Read, after these bytes
            return kEnd;
        }
        return Fail("cannot read");
    }
    return bytes.size() > before ? kBytes : kNothing;
}

LiveSource::Event LiveSource::ReadFile(int waitMs, std::string& bytes, size_t limit) {
    for (int round = 0; round < 2; ++round) {
        // Replaced (another file now has the name) or shrunk: read again from the start.
        struct stat named, opened;
        if (stat(m_sPath.fn_str(), &named) == 0 &&
            (named.st_dev != m_iDevice || named.st_ino != m_iInode)) {
            wxString reason;
            if (!OpenFile(reason)) {
                m_sReason = reason;
                return kFailed;
            }
            return kAgain;
        }
        if (fstat(m_iFd, &opened) != 0)
            return Fail("cannot read");
        if (opened.st_size < m_iOffset) {
            m_iOffset = 0;
            return kAgain;
        }
        const size_t before = bytes.size();
        char buffer[65536];
        while (bytes.size() - before < limit) {
            const size_t want = std::min(sizeof buffer, limit - (bytes.size() - before));
            const ssize_t got = pread(m_iFd, buffer, want, m_iOffset);
            if (got < 0 && errno == EINTR)
                break;
            if (got < 0)
                return Fail("cannot read");
            if (got == 0)
                break;
            bytes.append(buffer, static_cast<size_t>(got));
            m_iOffset += got;
        }
        if (bytes.size() > before)
            return kBytes;
        if (round == 1 || waitMs <= 0)
            break;
        if (m_iWatch >= 0) {
            if (WaitReadable(m_iWatch, waitMs)) {
                char events[4096];
                while (read(m_iWatch, events, sizeof events) > 0) {
                }
            }
        } else {
            poll(nullptr, 0, std::min(waitMs, 100));
        }
    }
    return kNothing;
}

std::vector<wxString> LiveSource::ListSerialPorts() {
    std::vector<wxString> ports;
    DIR* dir = opendir("/sys/class/tty");
    if (!dir)
        return ports;
    while (dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name[0] == '.')
            continue;
        const std::string device = "/sys/class/tty/" + name + "/device";
        struct stat st;
        if (stat(device.c_str(), &st) != 0)
            continue;  // a virtual terminal or a pseudo-terminal: no driver behind it
        const std::string path = "/dev/" + name;
        char driver[256] = {0};
        const ssize_t length = readlink((device + "/driver").c_str(), driver, sizeof driver - 1);
        const std::string driverName =
            length > 0 ? std::string(driver, static_cast<size_t>(length)) : std::string();
        // The built-in 8250 driver stands behind every ttyS port whether the hardware is
        // there or not: such a port is listed only when it reports a UART.
        if (driverName.find("serial8250") != std::string::npos) {
            const int fd = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
            if (fd < 0)
                continue;
            serial_struct info;
            const bool present = ioctl(fd, TIOCGSERIAL, &info) == 0 && info.type != PORT_UNKNOWN;
            close(fd);
            if (!present)
                continue;
        }
        ports.push_back(wxString::FromUTF8(path.c_str()));
    }
    closedir(dir);
    std::sort(ports.begin(), ports.end());
    return ports;
}

}  // namespace vyrtools
