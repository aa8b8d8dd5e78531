#include "vyrbase/data/VyrCourbe.h"

#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

VyrCourbe::VyrCourbe(int oid, VyrBaseData* base) : VyrEntity(oid, base), m_colour(255, 0, 0) {}

VyrCourbe::~VyrCourbe() {
    if (m_pSoeur && m_pSoeur->m_pSoeur == this)
        m_pSoeur->m_pSoeur = nullptr;
    m_listNotes.Clear();
}

void VyrCourbe::RemoveNote(VyrNote* note) {
    m_listNotes.DeleteObject(note);
}
