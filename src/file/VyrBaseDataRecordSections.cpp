// The sections of the records that do not exist yet in this build: annotations, interval
// tools, report, grid, pictures and the seven physiology records. Until their records'
// sections replace this file, each reader passes over its section (as for a section it does
// not use) and answers the next header, each writer writes nothing, and annotations are not
// bound to curves after a load.
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"

wxString VyrBaseData::ParseNote() { return SkipSection(); }
wxString VyrBaseData::ParseOutilInterval() { return SkipSection(); }
wxString VyrBaseData::ParseReport() { return SkipSection(); }
wxString VyrBaseData::ParseGrille() { return SkipSection(); }
wxString VyrBaseData::ParseSpirog() { return SkipSection(); }
wxString VyrBaseData::ParseSpirom() { return SkipSection(); }
wxString VyrBaseData::ParseSpiroExp() { return SkipSection(); }
wxString VyrBaseData::ParseRespihomConfig() { return SkipSection(); }
wxString VyrBaseData::ParseRespihomData() { return SkipSection(); }
wxString VyrBaseData::ParseSpiroMetaConfig() { return SkipSection(); }
wxString VyrBaseData::ParseSpiroMetaData() { return SkipSection(); }
wxString VyrBaseData::ParseImageRedy() { return SkipSection(); }
wxString VyrBaseData::ParseImage() { return SkipSection(); }

bool VyrBaseData::SauveAnnotations(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveOutilInterval(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveCompteRendu(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveSpirog(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveSpiroExp(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveSpirom(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveRespihomConfig(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveRespihomData(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveSpiroMetaConfig(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveSpiroMetaData(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveGrille(VyrTextWriter& out) { return out.IsOk(); }
bool VyrBaseData::SauveImageRedy(VyrTextWriter& out) { return out.IsOk(); }

void VyrBaseData::AttribuerLesAnnotations() {}
void VyrBaseData::ResolveTolvaneNotes(VyrCourbe* /*c*/) {}
