#include "Paths.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace py = pybind11;

wxString PathArgument(const py::handle& path) {
    // os.fspath raises TypeError itself for what is not a path; os.fsdecode turns bytes paths
    // into text the way Python does for file names.
    py::module_ os = py::module_::import("os");
    py::object text = os.attr("fsdecode")(os.attr("fspath")(path));
    return wxString::FromUTF8(text.cast<std::string>().c_str());
}

namespace {
// The errno that reading the file would meet.
int ReadErrno(const wxString& name) {
    const wxCharBuffer file = name.fn_str();
    struct stat info;
    if (::stat(file, &info) != 0)
        return errno;
    if (S_ISDIR(info.st_mode))
        return EISDIR;
    const int fd = ::open(file, O_RDONLY);
    if (fd < 0)
        return errno;
    ::close(fd);
    return EIO;
}
}  // namespace

void ThrowCannotRead(const py::handle& path, const wxString& name) {
    errno = ReadErrno(name);
    // Picks the subclass from errno (ENOENT: FileNotFoundError, EACCES: PermissionError, ...).
    PyErr_SetFromErrnoWithFilenameObject(PyExc_OSError, path.ptr());
    throw py::error_already_set();
}

void ThrowCannotWrite(const wxString& name, const wxString& reason) {
    const wxString message = name + ": " + reason;
    PyErr_SetString(PyExc_OSError, message.utf8_str());
    throw py::error_already_set();
}
