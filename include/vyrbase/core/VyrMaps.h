// The library's typed hash maps (chained tables of the toolkit). A map never deletes the objects
// its pointer values point to: the owner named in each comment does.
#ifndef VYRBASE_CORE_VYRMAPS_H
#define VYRBASE_CORE_VYRMAPS_H

#include <wx/hashmap.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrUnit;
class VyrCourbe;
class VyrVecteur;

// Unit oid -> unit record; the document owns the records while a file is read or written.
WX_DECLARE_HASH_MAP_WITH_DECL(int, VyrUnit*, wxIntegerHash, wxIntegerEqual, VyrIntToUnitMap,
                              class VYRBASE_API);
// Vector oid -> unit oid.
WX_DECLARE_HASH_MAP_WITH_DECL(int, int, wxIntegerHash, wxIntegerEqual, VyrIntToIntMap,
                              class VYRBASE_API);
// Note oid -> text of the note's "curve" line, while a file is read.
WX_DECLARE_HASH_MAP_WITH_DECL(int, wxString, wxIntegerHash, wxIntegerEqual, VyrIntToStringMap,
                              class VYRBASE_API);
// Unit text -> per-unit range record; a diagram owns the records of its two maps.
WX_DECLARE_STRING_HASH_MAP_WITH_DECL(VyrUnit*, VyrStrToUnitMap, class VYRBASE_API);
// Declared for the application.
WX_DECLARE_HASH_MAP_WITH_DECL(int, VyrCourbe*, wxIntegerHash, wxIntegerEqual, VyrIntToCourbeMap,
                              class VYRBASE_API);
WX_DECLARE_HASH_MAP_WITH_DECL(int, VyrVecteur*, wxIntegerHash, wxIntegerEqual, VyrIntToVecteurMap,
                              class VYRBASE_API);
WX_DECLARE_HASH_MAP_WITH_DECL(long, VyrVecteur*, wxIntegerHash, wxIntegerEqual, VyrLongToVecteurMap,
                              class VYRBASE_API);

#endif
