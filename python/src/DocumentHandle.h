// The shared owner of one document. Every Python object that reaches into a document (the
// Document itself, its experiments and curves, and each numpy view of a vector) holds the
// document through one of these, so the document lives as long as the last of them, whichever
// Python drops first.
//
// It also counts the numpy views that are alive on each vector. A vector's storage moves when
// the vector grows past its capacity, and a view cannot follow it: while a vector is viewed, the
// module refuses to change its length (BufferError), as Python refuses to resize a bytearray
// whose buffer is exported.
#ifndef VYR_PYTHON_DOCUMENTHANDLE_H
#define VYR_PYTHON_DOCUMENTHANDLE_H

#include <memory>
#include <unordered_map>

class VyrBaseData;
class VyrVecteur;

class DocumentHandle {
public:
    // A new empty document, as the application makes one (two diagrams, diagram 0 active).
    DocumentHandle();
    ~DocumentHandle();
    DocumentHandle(const DocumentHandle&) = delete;
    DocumentHandle& operator=(const DocumentHandle&) = delete;

    VyrBaseData& Doc() { return *m_pDoc; }

    // Views of `vector` alive: one more, one fewer, how many.
    void AddView(const VyrVecteur* vector);
    void RemoveView(const VyrVecteur* vector);
    int ViewCount(const VyrVecteur* vector) const;

private:
    std::unique_ptr<VyrBaseData> m_pDoc;
    std::unordered_map<const VyrVecteur*, int> m_views;
};

using DocumentRef = std::shared_ptr<DocumentHandle>;

#endif
