// Path arguments and the OS errors about them, as Python code expects them: str or any
// os.PathLike in; FileNotFoundError, PermissionError, IsADirectoryError... out.
#ifndef VYR_PYTHON_PATHS_H
#define VYR_PYTHON_PATHS_H

#include <pybind11/pybind11.h>

#include <wx/string.h>

// os.fspath(path) as the toolkit's text; TypeError for anything that is not a path.
wxString PathArgument(const pybind11::handle& path);

// Throws the OSError subclass that says why `path` cannot be read (errno of stat or open),
// naming the path.
[[noreturn]] void ThrowCannotRead(const pybind11::handle& path, const wxString& name);

// Throws OSError("<path>: <reason>") for an output that could not be written.
[[noreturn]] void ThrowCannotWrite(const wxString& name, const wxString& reason);

#endif
