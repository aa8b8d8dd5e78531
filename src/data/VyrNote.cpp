#include "vyrbase/data/VyrNote.h"

VyrNote::VyrNote(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrNote::~VyrNote() = default;
