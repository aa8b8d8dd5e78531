// Starting the toolkit the library is built on, once per process and without a display:
// documents, fonts and pictures need it, windows are never opened.
#ifndef VYR_PYTHON_TOOLKIT_H
#define VYR_PYTHON_TOOLKIT_H

// Starts the toolkit on the first call; throws std::runtime_error (ImportError for the module)
// when it cannot be started.
void StartToolkit();

#endif
