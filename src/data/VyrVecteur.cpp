#include "vyrbase/data/VyrVecteur.h"

VyrVecteur::VyrVecteur(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrVecteur::VyrVecteur(const VyrVecteur& other)
    : VyrEntity(other),
      m_sGrandeur(other.m_sGrandeur),
      m_sGrandeurForTable(other.m_sGrandeurForTable),
      m_sUnite(other.m_sUnite),
      m_validity(other.m_validity),
      m_iSize(other.m_iSize),
      m_pValues(other.m_pValues),
      m_iCapacity(other.m_iCapacity) {}

VyrVecteur::~VyrVecteur() {
    delete[] m_pValues;
}
