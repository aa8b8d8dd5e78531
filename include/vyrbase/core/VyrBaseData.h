// The document: it owns every entity of a lab session (one flat list of attached entities and a
// store of entities detached for undo), hands out oids, creates and finds entities by kind and
// oid, owns the unit records while a file is read or written, owns its two diagrams and knows
// which one is active. It is an observable: every change is announced to its observers, chiefly
// the diagrams (see VyrObserverMsg.h for the codes).
//
// Threads: single-threaded. Use a document from the application's user-interface thread only.
// Errors: no operation throws; bad input gets false, null, -1, 0 or nothing.
#ifndef VYRBASE_CORE_VYRBASEDATA_H
#define VYRBASE_CORE_VYRBASEDATA_H

#include <cstddef>
#include <string_view>
#include <vector>

#include <wx/arrstr.h>
#include <wx/colour.h>
#include <wx/dynarray.h>
#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrEntityIndex.h"
#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLineTokenizer.h"
#include "vyrbase/core/VyrLists.h"
#include "vyrbase/core/VyrMaps.h"
#include "vyrbase/core/VyrObservable.h"

class wxDocument;
class wxFile;
class wxMBConv;
class VyrCourbe;
class VyrCourbeParam;
class VyrCompteRendu;
class VyrDiagram;
class VyrExperience;
class VyrExperienceParam;
class VyrFileSink;
class VyrSafeFile;
class VyrGrilleEntity;
class VyrImageRedyEntity;
class VyrNote;
class VyrOutilInterval;
class VyrRespihomConfigEntity;
class VyrRespihomDataEntity;
class VyrSpirogEntity;
class VyrSpiroExpEntity;
class VyrSpiroMetaConfigEntity;
class VyrSpiroMetaDataEntity;
class VyrSpiromEntity;
class VyrTextWriter;
class VyrUnit;
class VyrVariable;
class VyrVecteur;

// A table of doubles read from a file.
typedef wxArrayDouble VyrArrayDouble;

class VYRBASE_API VyrBaseData : public VyrObservable {
public:
    // ---- Construction and teardown -------------------------------------------------------

    // Creates an empty document bound to the toolkit document `doc` (not owned, may be null),
    // with its two diagrams (index 0 and 1), a diagram count of 1 and diagram 0 active.
    explicit VyrBaseData(wxDocument* doc);
    // Shallow, member-wise: both documents then share entities, units and diagrams. Nothing in
    // the library copies a document.
    VyrBaseData(const VyrBaseData&) = default;
    VyrBaseData& operator=(const VyrBaseData&) = default;
    // Deletes both diagrams, unregisters every observer, then deletes every entity (Delete).
    virtual ~VyrBaseData();

    // Empties the document: DeleteAllExperiences, then deletes every entity of the list and of
    // the detached store, and starts oids again at 1. Unit records are left alone.
    void Delete();
    // True while Delete runs (its notifications included). Nothing writes to the document's
    // vectors then, so values computed from them once during one Delete hold until it ends;
    // each Delete has its own number (from 1), GetEmptyingNumber.
    bool IsEmptying() const { return m_iEmptying > 0; }
    unsigned GetEmptyingNumber() const { return m_uEmptyingNumber; }
    // Deletes every entity of the list; keeps the oid counter and the detached store.
    void Cleanup();
    // Debugging hook kept empty: walks the entities, prints nothing, changes nothing.
    void Dump();

    // ---- Oids and creation ---------------------------------------------------------------

    // Increments the oid counter and returns it: 1, 2, 3... never reused while the document
    // lives (Delete starts again at 1). A counter at the largest int (an oid read from a file)
    // stays there.
    int GetNewOid();
    // The highest oid handed out or seen.
    int GetLastOid() const { return m_iLastOid; }

    // Appends a new note with a fresh oid to the entity list and returns it.
    VyrNote* CreateNoteEntity();

    // Single-record getters. With create false: the first record of that kind, or null. With
    // create true: always a new record with a fresh oid (named when name is not null), appended.
    VyrGrilleEntity* GetGrilleEntity(bool create, const wchar_t* name);
    VyrCompteRendu* GetCompteRenduEntity(bool create, const wchar_t* name);
    VyrSpirogEntity* GetSpirogEntity(bool create, const wchar_t* name);
    VyrRespihomConfigEntity* GetRespihomConfigEntity(bool create, const wchar_t* name);
    VyrRespihomDataEntity* GetRespihomDataEntity(bool create, const wchar_t* name);
    VyrSpiromEntity* GetSpiromEntity(bool create, const wchar_t* name);
    VyrSpiroMetaConfigEntity* GetSpiroMetaConfigEntity(bool create, const wchar_t* name);
    VyrSpiroMetaDataEntity* GetSpiroMetaDataEntity(bool create, const wchar_t* name);
    VyrSpiroExpEntity* GetSpiroExpEntity(bool create, const wchar_t* name);

    // Appends a new picture record with a fresh oid (named when name is not null).
    VyrImageRedyEntity* CreateImageRedyEntity(const wchar_t* name);

    // Adds a copy of `model` (its four texts and four values) unless an interval tool with the
    // same texts (exact, case included) and values exists. Answers true when it was already
    // present (nothing added), false when a copy was added. The caller keeps `model`.
    bool AddOutilIntervalEntity(VyrOutilInterval* model);
    // Deletes an attached entity and removes it from the list. Null, detached and foreign
    // entities are ignored.
    void DeleteOutilInterval(VyrOutilInterval* tool);
    void RemoveEntity(VyrEntity* entity);

    // ---- Lookup ----------------------------------------------------------------------------

    // The first attached entity with that oid, or null. Detached entities are not found.
    VyrEntity* FindEntity(int oid);
    // The first attached entity of that kind, or null.
    VyrEntity* GetEntity(int kind);

    // Iteration by kind: node = GetFirstEntityNode(kind); while (node) e = GetNextEntity(&node,
    // kind); GetNextEntity answers the entity of *cursor and advances to the next of that kind.
    wxVyrListEntityNode* GetFirstEntityNode(int kind);
    VyrEntity* GetNextEntity(wxVyrListEntityNode** cursor, int kind);
    wxVyrListEntityNode* GetFirstExperienceNode();
    VyrExperience* GetNextExperience(wxVyrListEntityNode** cursor);
    wxVyrListEntityNode* GetFirstCourbeNode();
    VyrCourbe* GetNextCourbe(wxVyrListEntityNode** cursor);
    wxVyrListEntityNode* GetFirstImageRedyEntityNode();
    VyrImageRedyEntity* GetNextImageRedyEntity(wxVyrListEntityNode** cursor);
    wxVyrListEntityNode* GetFirstOutilIntervalNode();
    VyrOutilInterval* GetNextOutilInterval(wxVyrListEntityNode** cursor);

    // The first interval tool whose selected flag is set, or null.
    VyrOutilInterval* HitTestOutilInterval();

    wxDocument* GetDocument() const { return m_pDocument; }
    // Every attached entity, in order of creation or attachment.
    const VyrListEntity& GetEntityList() const { return m_listEntity; }
    // The entities detached for undo, oldest first.
    const VyrArrayEntity& GetDeconnectedEntities() const { return m_arrayDeconnected; }

    // ---- Units -----------------------------------------------------------------------------

    // The unit record of that oid, or null. Unit records exist only while a file is read.
    VyrUnit* FindUnit(int unitOid);
    // The unit oid recorded for the vector, or 0 (also for null).
    int FindUnitOid(VyrVecteur* vector);
    // Deletes every unit record of the units map; the entries stay (callers clear the map).
    void DeleteUnits();
    VyrIntToUnitMap& GetUnitMap() { return m_mapUnits; }
    VyrIntToIntMap& GetVectorUnitMap() { return m_mapVectorUnit; }
    VyrIntToStringMap& GetNoteCurveMap() { return m_mapNoteCurve; }

    // ---- Diagrams --------------------------------------------------------------------------

    // Diagram 0 or 1; null for any other index.
    VyrDiagram* GetDiagram(int index) const;
    // How many of the two diagrams are in use: 1 or 2.
    int GetDiagramCount() const { return m_iDiagramCount; }
    // The first diagram whose active flag is set, or null.
    VyrDiagram* GetActiveDiagram() const;
    // Makes `diagram` the active one and sends VYR_MSG_ACTIVE_DIAGRAM_CHANGED (21). Nothing for
    // null or for the diagram that is already active.
    void SetActiveDiagram(VyrDiagram* diagram);
    // Uses 1 or 2 diagrams (anything else: false). A change activates diagram n-1, sends 21 when
    // the active diagram changed, then VYR_MSG_DIAGRAM_COUNT_CHANGED (30).
    bool SetDiagramCount(int count);
    // The title note of diagram 0 or 1 (null when it has none, and for any other index); the
    // setter does nothing for another index. The note stays an entity of the document.
    VyrNote* GetDiagramTitle(int index) const;
    void SetDiagramTitle(int index, VyrNote* note);

    // ---- Active document (process-wide; set by the application, never by the library) ----

    static VyrBaseData* GetActiveBase();
    static void SetActiveBase(VyrBaseData* base);

    // ---- Experiments, curves and variables -------------------------------------------------

    // The experiment named exactly like p's name, or a new one (fresh oid, code 13).
    VyrExperience* CreateExperience(VyrExperienceParam& p);
    // The stem (prefix, or the resource text of "IDS_MANIPULATION"/"IDS_EXPERIENCE",
    // VyrResourceText) followed by one more than the largest number that follows the stem in an
    // experiment's name.
    wxString GenerateExperienceName(const wxString& prefix, bool manipulation);
    // Creates a curve and its two vectors in `e` (three consecutive oids), or reuses and
    // empties the curve with the same quantities and units. Code 11 always; code 1 (null) when
    // a curve was reused and notify is true. Null for a null experiment.
    VyrCourbe* CreateCourbe(VyrExperience* e, VyrCourbeParam& p, bool* created, bool notify);
    // grdY, or grdY followed by 1, 2, 3... until no curve of e matches.
    static wxString GetUniqueGrandeur(VyrExperience* e, const wxString& grdY,
                                      const wxString& uniteY, const wxString& grdX,
                                      const wxString& uniteX);
    // The experiment's variable of that name, or a new one. Null for a null experiment.
    VyrVariable* CreateVariableEntity(VyrExperience* e, wxString name);
    void DeleteVariable(VyrVariable* v, VyrExperience* e);
    void DeleteAllVariables(VyrExperience* e);

    VyrCourbe* FindCourbe(const wchar_t* name);
    VyrCourbe* FindCourbeByOid(int oid);
    VyrExperience* FindExperience(const wchar_t* name);
    VyrExperience* FindExperienceByOid(int oid);
    VyrExperience* FindExperienceFromCourbe(VyrCourbe* c);
    VyrCourbe* FindCourbeByVect(VyrVecteur* v, bool* isX);
    VyrExperience* FindExperienceByVect(VyrVecteur* v);
    VyrVecteur* FindVector(const wxString& grandeur);
    VyrCourbe* FindFirstCourbeByGrdY(const wxString& grandeur);
    VyrCourbe* FindFirstCourbeByGrdxUx(const wxString& grandeur, const wxString& unite);

    // ---- Point editing (notify: send VYR_MSG_DATA_CHANGED afterwards) -----------------------

    void AddPoint(VyrCourbe* c, double x, double y, bool notify);
    int AddSortPoint(VyrCourbe* c, double x, double y, bool replace, bool notify);
    void RemovePointAt(VyrCourbe* c, int index, bool notify);
    void ValidePoint(VyrCourbe* c, bool valid, bool notify);
    void RazCourbe(VyrCourbe* c, bool notify);
    // Sorts by ascending X (validity marks stay with positions). Not reentrant.
    static void SortCurve(VyrCourbe* c, bool removeDuplicates);

    // ---- Derived curves --------------------------------------------------------------------

    static void Echant(VyrCourbe* c, double x0, double x1, int n);
    VyrCourbe* CreateCourbeForCalc(VyrCourbe* c, double xmin, double xmax);
    VyrCourbe* DupliqueCourbe(VyrCourbe* c, wxString& grdY, wxColour colour);
    void RemoveVecteurOrphelin();
    void RemoveCourbesXYInutiles();
    void ChangeAllVecteurX(const wxString& grandeur, const wxString& unite);

    // ---- Deletion, with and without undo ---------------------------------------------------

    void DeconnectEntity(VyrEntity* e);
    void ReconnectEntity(VyrEntity* e);
    void DeconnectCurve(VyrCourbe* c);
    void ReconnectCurve(VyrCourbe* c);
    void DeconnectExperience(VyrExperience* e);
    void ReconnectExperience(VyrExperience* e);
    void DeleteCourbe(VyrCourbe* c, VyrExperience* e);
    void DeleteNoteOfCourbe(VyrCourbe* c);
    void DeleteExperience(VyrExperience* e);
    void DeleteAllExperiences();
    void EraseCourbe(const wchar_t* name);
    void EraseExperience(const wchar_t* name);
    bool DeleteCurveWithUndo(VyrCourbe* c);
    bool DeleteExperienceWithUndo(VyrExperience* e);
    bool DeleteNoteWithUndo(VyrDiagram* d, VyrCourbe* c, VyrNote* n);

    // ---- The document file -----------------------------------------------------------------

    // Replaces the document by the file's content (UTF-16LE with mark, UTF-8, ISO-8859-1).
    // Always notifies VYR_MSG_FILE_LOADED (8) at the end, also after a failure. Memory that
    // cannot be had is a failed load (false), never an exception.
    bool Load(const wxString& path);
    // Replaces the document by the content of `length` bytes, read exactly as Load reads a
    // file holding them (no terminating zero needed). Null bytes of a non-zero length answer
    // false and keep the document, as a file that cannot be opened; notifies 8 either way.
    bool LoadFromMemory(const void* bytes, size_t length);
    // Writes the document as UTF-16LE with its mark, sections in their fixed order, into the
    // file itself (created or truncated): a failure leaves a partial file.
    bool Save(const wxString& path);
    // Writes the same bytes as Save into a new file beside `path` and renames it over `path`
    // only once it is completely written and durable (VyrSafeFile): a failure leaves the
    // previous file byte for byte as it was (or no file when there was none).
    bool SaveSafely(const wxString& path);
    // SaveSafely through a VyrSafeFile of the caller's (not yet opened), which then tells where
    // a failure stopped (GetFailedStep, GetError).
    bool SaveSafely(VyrSafeFile& file);
    // Writes the measured data as ";"-separated UTF-8 without mark.
    bool SaveAsCsvUTF8(const wxString& path);
    // Off by default: Save writes its numbers in the file's C formats, "%g" (six significant
    // digits) for values and "%.8f" for scale bounds, which round 1000.001 to 1000. On, every
    // double of the file is written in the shortest text that reads back to the very same
    // double ("1000.001", "0.1", "1e-300"), so that a save and a load change no value. The
    // reader takes both forms; the other bytes of the file stay as they are.
    void SetExactNumbers(bool exact) { m_bExactNumbers = exact; }
    bool GetExactNumbers() const { return m_bExactNumbers; }

    static bool IsUTF8TextFile(unsigned char* bytes, int length, bool* hasMark);
    static bool IsUnicodeTextFile(unsigned char* bytes, int length, bool* littleEndian);
    bool ParseUnicodeText(wchar_t* text);

    static int GetInt(const wchar_t* line);
    static double GetDouble(const wchar_t* line);
    bool ParseString(const wchar_t* line, wxString& value);
    bool ParseTableDouble(VyrArrayDouble* values);
    bool ParseTableInt(wxArrayInt* values, const wxString& line);
    wxString SkipSection();
    wxString ParseInconnu(const wxString& header, wchar_t* text, bool* stop);
    void SimuleSectionManip();
    void AttribuerLesAnnotations();
    void ResolveTolvaneNotes(VyrCourbe* c);

    static bool WriteHeaderUnicode(wxFile& file);
    static bool WriteInFile(wxFile& file, wxString& text, wxMBConv* conv);
    static wxString GetStringSave(const wxString& text);
    static wxString GetStringStyle(VyrCourbe* c);
    static wxString GetStringStyleEx(VyrCourbe* c);
    bool SauveSectionInconnue(wxFile& file);
    static void SaveDataInFile(const wchar_t* path, const unsigned char* data, unsigned int size);

    // The texts of the sections the last load did not know, written back by the next save.
    const wxArrayString& GetUnknownSections() const { return m_asUnknownSections; }

protected:
    // Constructs an entity of `kind` (1..17, else null) with the caller's oid, names it when
    // name is not null, appends it and raises the oid counter to at least `oid`. Never checks
    // that the oid is free.
    VyrEntity* CreateEntity(int kind, int oid, const wchar_t* name);

    // ---- Section readers and writers (one per section of the file) --------------------------
    // Each reader consumes its lines from the tokenizer and returns the next section header
    // (empty at the end of the text); the three that can end the whole load raise *stop.
    wxString ParseUnit();
    wxString ParseVector(bool* stop);
    wxString ParseCurve(bool* stop);
    wxString ParseExperience(bool* stop);
    wxString ParseNote();
    wxString ParseOutilInterval();
    wxString ParseReport();
    wxString ParseGrille();
    wxString ParseSpirog();
    wxString ParseSpirom();
    wxString ParseSpiroExp();
    wxString ParseRespihomConfig();
    wxString ParseRespihomData();
    wxString ParseSpiroMetaConfig();
    wxString ParseSpiroMetaData();
    wxString ParseImageRedy();
    // The older picture record: no section header leads to it.
    wxString ParseImage();

    // Each writer appends its sections, in entity-list order, and answers out.IsOk() (false
    // once a write came up short). Save calls them in the file's fixed order of sections.
    bool SauveAnnotations(VyrTextWriter& out);
    bool SauveOutilInterval(VyrTextWriter& out);
    bool SauveCompteRendu(VyrTextWriter& out);
    bool SauveUnite(VyrTextWriter& out);
    bool SauveVecteur(VyrTextWriter& out);
    bool SauveCourbe(VyrTextWriter& out);
    bool SauveSpirog(VyrTextWriter& out);
    bool SauveSpiroExp(VyrTextWriter& out);
    bool SauveSpirom(VyrTextWriter& out);
    bool SauveRespihomConfig(VyrTextWriter& out);
    bool SauveRespihomData(VyrTextWriter& out);
    bool SauveSpiroMetaConfig(VyrTextWriter& out);
    bool SauveSpiroMetaData(VyrTextWriter& out);
    bool SauveExperience(VyrTextWriter& out);
    bool SauveGrille(VyrTextWriter& out);
    bool SauveImageRedy(VyrTextWriter& out);

    // ---- Reading primitives shared by the section readers ----------------------------------
    // A section reader is a loop: while (NextSectionLine(line, header)) { match the key... }
    // return header;
    //
    // Takes the next line of the current section. Answers false at a line that begins with "["
    // (the next section's header, given in `header`) or at the end of the text (`header`
    // empty).
    bool NextSectionLine(std::wstring_view& line, wxString& header);
    // ParseString on a line view: the quoted value after "=", continued over the following
    // lines until its closing quote. Answers whether the closing quote was found.
    bool ReadQuoted(std::wstring_view line, wxString& value);
    // ParseTableInt on a line view.
    bool ReadTableInt(std::wstring_view line, std::vector<int>& values);
    // ParseTableDouble into a plain vector (no toolkit array in between).
    bool ReadTableDouble(std::vector<double>& values);
    // ParseTableDouble straight into the storage of a vector: `count` values read from the
    // table line `line` (the count written after "table" is only a hint for the room to make).
    // The vector ends as Resize(count) and copying the values in would leave it.
    bool ReadTableDoubleInto(std::wstring_view line, VyrVecteur* vector);

private:
    friend class VyrBaseDataTestAccess;
    // Replaces the content as a load does: builds entities with CreateEntity, notifies code 8.
    friend class VyrTableImport;
    // Announces a batch of appended rows once per curve with code 1, as AddPoint would per point.
    friend class VyrLiveTable;

    // The steps of Load and LoadFromMemory: emptying the unit maps, decoding and parsing the
    // bytes (answers the result), and what runs after every attempt (answers the result,
    // false when memory ran out there).
    void BeginLoad();
    // `ownBuffer`: the bytes belong to the load, which may give back the pages it has read.
    bool ParseFileBytes(const unsigned char* bytes, size_t length, bool ownBuffer);
    // ParseUnicodeText of a text whose first line is not a header, without the text: false
    // when more lines follow (`lone` false), else as for an empty text.
    bool ParseFirstLineOnly(bool lone);
    bool EndLoad(bool result);
    // After a load: gives each curve, vector and note that the file gave several owners to its
    // first owner only (the document's deletions rely on single owners).
    void UnshareLoadedLinks();
    // What is left when memory runs out during UnshareLoadedLinks: every curve taken out of its
    // experiment, every note out of its curve and every vector out of its curve, without
    // allocating (the entities stay in the document, each with its one owner, the list).
    void DropLoadedLinks();
    // The whole document file (mark and every section) into an open sink; true when every
    // byte was written. Save and SaveSafely differ only in the sink they give.
    bool WriteDocument(VyrFileSink& sink);
    // SauveSectionInconnue into the document writer's buffer.
    bool SauveSectionInconnue(VyrTextWriter& out);

    // Parses the text the tokenizer was set on (ParseUnicodeText without the setting). With
    // `releaseConsumed` (text nobody else reads), the pages the reader has passed go back to
    // the system as it reads.
    bool ParseTokenizedText(bool releaseConsumed);
    // Parses UTF-16LE text in place (Load of a file with the mark FF FE). When
    // `releaseConsumed`, the pages of the text that the reader has passed in a table of values
    // go back to the system while it reads: the caller's buffer is then no longer readable
    // behind the reader, and a document of millions of points does not hold the whole file
    // and its own values at once.
    bool ParseUtf16Text(const unsigned char* bytes, size_t units, bool releaseConsumed);
    // ParseUnicodeText of a text the load decoded for itself (UTF-8, ISO-8859-1, odd-length
    // UTF-16): nobody else reads it, so the pages the reader has passed go back to the system.
    bool ParseOwnText(wchar_t* text);
    // Hands the section of `header` to its reader (an unknown header to ParseInconnu) and
    // answers the next header; notes when an experiment section was met.
    wxString ReadSection(const wxString& header, bool* stop, bool* experienceSeen);
    // Pieces of the curve reader.
    static wxColour ColourFromFile(int value);
    static void ApplyStyleEx(VyrCourbe* curve, const wxString& style);
    VyrVecteur* FindCurveVector(int oid, VyrCourbe* curve, bool x);
    void RaiseDiagramCount(int count);

    // The seven physiology sections: one writer and one reader driven by the kind's table.
    bool SauvePhysioRecords(VyrTextWriter& out, int kind);
    wxString ParsePhysioRecords(int kind);

    void CreateDiagrams();
    void DestroyDiagrams();

    // The only ways the entity list changes, so that its index stays in step: append at the
    // end, erase one node, delete and forget every entity.
    wxVyrListEntityNode* AppendToList(VyrEntity* entity);
    void EraseFromList(wxVyrListEntityNode* node);
    // The index, rebuilt first when the document was copied.
    const VyrEntityIndex& Index();
    // The first node of the list holding `entity`, or null.
    wxVyrListEntityNode* NodeOf(const VyrEntity* entity) { return Index().FindEntity(entity); }

    VyrDiagram* m_pDiagrams[2];
    int m_iDiagramCount;
    VyrListEntity m_listEntity;
    int m_iLastOid;
    VyrIntToUnitMap m_mapUnits;
    VyrIntToIntMap m_mapVectorUnit;
    VyrIntToStringMap m_mapNoteCurve;
    // The reader's line tokenizer over the text being loaded (views into it, no copies).
    VyrLineTokenizer m_tokenizer;
    // Set while the reader may hand the pages of text behind it back to the system (a large
    // table of values, a value of many lines, an unknown section).
    bool m_bReleaseConsumed = false;
    // The units of that text given back so far (from its start).
    size_t m_iReleasedUnits = 0;
    // Delete in progress (nesting depth) and the number of the latest Delete.
    int m_iEmptying = 0;
    unsigned m_uEmptyingNumber = 0;
    wxArrayString m_asUnknownSections;
    bool m_bExactNumbers = false;
    wxDocument* m_pDocument;
    VyrArrayEntity m_arrayDeconnected;
    // Nodes of the entity list by oid, by entity and by kind.
    VyrEntityIndex m_entityIndex;

    static VyrBaseData* m_pActiveBase;
};

#endif
