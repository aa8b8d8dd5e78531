#include "diagram/VyrSystemColours.h"

#include <cstdlib>

#include <wx/settings.h>

#ifdef __WXGTK__
#include <dlfcn.h>
#endif

namespace VyrSystemColours {

namespace {

#ifdef __WXGTK__
bool EnvironmentNamesDisplay() {
    const char* x11 = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    return (x11 && *x11) || (wayland && *wayland);
}
#endif

}  // namespace

bool HasDisplay() {
#ifdef __WXGTK__
    // GDK is already loaded by the toolkit; looking its function up at run time avoids
    // compiling against GDK headers. A null default display means that GTK could not open one,
    // and wxSystemSettings would then dereference a null style context.
    using DisplayGetter = void* (*)();
    void* symbol = dlsym(RTLD_DEFAULT, "gdk_display_get_default");
    if (symbol)
        return reinterpret_cast<DisplayGetter>(symbol)() != nullptr;
    return EnvironmentNamesDisplay();
#else
    return true;
#endif
}

wxColour Highlight() {
    if (HasDisplay())
        return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    return wxColour(0, 120, 215);
}

wxColour HighlightText() {
    if (HasDisplay())
        return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT);
    return wxColour(255, 255, 255);
}

}  // namespace VyrSystemColours
