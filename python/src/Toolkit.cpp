#include "Toolkit.h"

#include <stdexcept>

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include "ResourceCatalogue.h"

void StartToolkit() {
    static bool started = false;
    if (started)
        return;
    // The console initialisation: no display is asked for, so the module works the same in a
    // terminal, a notebook kernel or CI. The library paints on cairo images and falls back to
    // fixed system colours when there is no display.
    if (!wxInitialize())
        throw std::runtime_error("vyrbase: cannot initialise the toolkit");
    // Failures reach Python as exceptions; the toolkit's message boxes would need a display.
    wxLog::EnableLogging(false);
    wxInitAllImageHandlers();
    // The library's texts (the default experiment's name, time labels) come from the module's
    // catalogue, as in the command-line tool.
    vyrtools::InstallResourceCatalogue();
    // Never uninitialised: documents may still be alive while the interpreter shuts down.
    started = true;
}
