// Loading when memory runs out: for every allocation that loading a real document makes,
// failing that one allocation makes the load either complete (true, the whole document) or
// answer false, with a document that can still be used and emptied; never a crash, never an
// exception out of Load. Under the sanitizers nothing may leak either (checked at exit).
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "FailingAllocator.h"
#include "vyrbase/VyrBase.h"

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// What a load built: every entity with its links, the pictures, the kept sections.
std::string Summary(VyrBaseData& doc) {
    std::string text;
    auto oid = [](const VyrEntity* e) { return std::to_string(e ? e->GetOid() : 0); };
    for (auto* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        VyrEntity* e = node->GetData();
        text += std::to_string(e->GetKind()) + ":" + oid(e) + ":" +
                std::string(e->GetEntityName().utf8_str());
        switch (e->GetKind()) {
            case VYR_KIND_VECTEUR: {
                VyrVecteur* v = static_cast<VyrVecteur*>(e);
                text += ":" + std::to_string(v->GetSize()) + ":" +
                        std::string(v->GetUnite().utf8_str());
                break;
            }
            case VYR_KIND_COURBE: {
                VyrCourbe* c = static_cast<VyrCourbe*>(e);
                text += ":" + oid(c->GetVx()) + ":" + oid(c->GetVy()) + ":" +
                        std::to_string(c->GetNotesCount());
                break;
            }
            case VYR_KIND_EXPERIENCE:
                text += ":" + std::to_string(static_cast<VyrExperience*>(e)->GetNbCourbe());
                break;
            case VYR_KIND_COMPTE_RENDU:
                text += ":" + std::string(static_cast<VyrCompteRendu*>(e)->GetRtf().utf8_str());
                break;
            case VYR_KIND_IMAGE_REDY:
                text += static_cast<VyrImageRedyEntity*>(e)->GetImage().IsOk() ? ":picture" : "";
                break;
        }
        text += "\n";
    }
    text += "titles:" + oid(doc.GetDiagramTitle(0)) + "," + oid(doc.GetDiagramTitle(1)) + "\n";
    for (const wxString& section : doc.GetUnknownSections())
        text += "unknown:" + std::string(section.utf8_str()) + "\n";
    return text;
}

struct Input {
    const char* name;
    std::string bytes;
};

std::vector<Input> Inputs() {
    const std::string seeds = VYR_SOURCE_DIR "/fuzz/corpus/load/";
    return {
        // The bundled sample itself: a picture of 160 by 120 pixels among the rest.
        {"oscillation sample", ReadFile(VYR_SOURCE_DIR "/samples/oscillation.vyr")},
        // Every section kind: notes, tools, report with packed data, grid, picture, records.
        {"oscillation (UTF-16)", ReadFile(seeds + "oscillation_utf16")},
        {"pendulum (UTF-8)", ReadFile(seeds + "pendulum_utf8")},
        {"spectrum (ISO-8859-1)", ReadFile(seeds + "spectrum_latin1")},
        {"notes bound by name", ReadFile(seeds + "notes_by_name")},
        {"one-line tables", ReadFile(seeds + "one_line_table")},
        {"unknown sections", ReadFile(seeds + "unknown_sections")},
        {"physiology record", ReadFile(seeds + "physio")},
        // An odd last byte: the UTF-16 text is decoded into a copy instead of read in place.
        {"odd-length UTF-16", ReadFile(seeds + "oscillation_utf16") + "A"},
    };
}

}  // namespace

TEST(VyrBaseDataLoadAllocation, EveryFailedAllocationGivesACompleteLoadOrFalse) {
    long total = 0;
    long answeredFalse = 0;
    long spared = 0;
    for (const Input& input : Inputs()) {
        SCOPED_TRACE(input.name);
        ASSERT_FALSE(input.bytes.empty());
        // A first load warms the toolkit's caches (translations, image handlers), so that the
        // count below is the same at every later load.
        std::string expected;
        long count = 0;
        for (int warm = 0; warm < 2; ++warm) {
            VyrBaseData doc(nullptr);
            failingalloc::Arm(0);
            const bool loaded = doc.LoadFromMemory(input.bytes.data(), input.bytes.size());
            failingalloc::Disarm();
            ASSERT_TRUE(loaded);
            count = failingalloc::Count();
            expected = Summary(doc);
        }
        ASSERT_GT(count, 5);
        std::printf("%s: %ld allocations\n", input.name, count);
        for (long n = 1; n <= count; ++n) {
            SCOPED_TRACE(n);
            VyrBaseData doc(nullptr);
            failingalloc::Arm(n);
            bool loaded = false;
            try {
                loaded = doc.LoadFromMemory(input.bytes.data(), input.bytes.size());
            } catch (...) {
                failingalloc::Disarm();
                ADD_FAILURE() << "an exception left LoadFromMemory";
                continue;
            }
            failingalloc::Disarm();
            if (failingalloc::Spared()) {
                ++spared;
                continue;
            }
            EXPECT_TRUE(failingalloc::Failed());
            if (loaded)
                EXPECT_EQ(expected, Summary(doc));
            else
                ++answeredFalse;
            // What is left is a usable document: it can be described and emptied.
            Summary(doc);
            doc.Delete();
            EXPECT_EQ(0u, doc.GetEntityList().GetCount());
        }
        total += count;
    }
    EXPECT_GT(answeredFalse, 0);
    std::printf(
        "allocations: %ld, failed in turn: %ld (load answered false: %ld), spared "
        "inside the toolkit's JPEG handler or converters: %ld\n",
        total, total - spared, answeredFalse, spared);
}

// Load from a file, Save, SaveSafely and the CSV export, for the sample with every section
// kind: the same promise (they answer false rather than throw, and leave a usable document); a
// safe save that answers false leaves the previous file as it was.
TEST(VyrBaseDataLoadAllocation, FileOperationsUnderEveryFailedAllocation) {
    const std::string sample = VYR_SOURCE_DIR "/fuzz/corpus/load/oscillation_utf16";
    char pattern[] = "/tmp/vyralloctestXXXXXX";
    const int fd = mkstemp(pattern);
    ASSERT_GE(fd, 0);
    close(fd);
    // Built before any allocation is made to fail: only the library's own are.
    const wxString target = wxString::FromUTF8(pattern);
    const wxString source = wxString::FromUTF8(sample.c_str());
    enum Operation { kLoad, kSave, kSaveSafely, kCsv };
    struct Case {
        Operation operation;
        const char* name;
    };
    const Case cases[] = {{kLoad, "Load from a file"},
                          {kSave, "Save"},
                          {kSaveSafely, "SaveSafely"},
                          {kCsv, "SaveAsCsvUTF8"}};
    auto run = [&](VyrBaseData& doc, Operation operation) {
        switch (operation) {
            case kLoad:
                return doc.Load(source);
            case kSave:
                return doc.Save(target);
            case kSaveSafely:
                return doc.SaveSafely(target);
            case kCsv:
                return doc.SaveAsCsvUTF8(target);
        }
        return false;
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        long count = 0;
        // What a load builds, or the bytes written, when nothing fails.
        std::string expected;
        for (int warm = 0; warm < 2; ++warm) {
            VyrBaseData doc(nullptr);
            ASSERT_TRUE(doc.Load(source));
            failingalloc::Arm(0);
            const bool done = run(doc, c.operation);
            failingalloc::Disarm();
            ASSERT_TRUE(done);
            count = failingalloc::Count();
            expected = c.operation == kLoad ? Summary(doc) : ReadFile(pattern);
        }
        ASSERT_GT(count, 5);
        long answeredFalse = 0;
        long spared = 0;
        for (long n = 1; n <= count; ++n) {
            SCOPED_TRACE(n);
            VyrBaseData doc(nullptr);
            ASSERT_TRUE(doc.Load(source));
            // The safe save starts from a file that differs from what it writes.
            if (c.operation == kSaveSafely) {
                std::ofstream(pattern, std::ios::binary | std::ios::trunc) << "previous";
            }
            failingalloc::Arm(n);
            bool done = true;
            try {
                done = run(doc, c.operation);
            } catch (...) {
                failingalloc::Disarm();
                ADD_FAILURE() << "an exception left " << c.name;
                continue;
            }
            failingalloc::Disarm();
            if (failingalloc::Spared()) {
                ++spared;
                continue;
            }
            answeredFalse += !done;
            // A true answer means the whole document was read, or written.
            if (done) {
                EXPECT_TRUE(expected == (c.operation == kLoad ? Summary(doc) : ReadFile(pattern)));
            } else if (c.operation == kSaveSafely) {
                EXPECT_TRUE(ReadFile(pattern) == "previous");
            }
            EXPECT_TRUE(doc.GetVectorUnitMap().empty());
            doc.Delete();
        }
        EXPECT_GT(answeredFalse, 0);
        std::printf(
            "%s: %ld allocations, %ld failed in turn (%ld answered false), %ld spared "
            "inside the toolkit's JPEG handler or converters\n",
            c.name, count, count - spared, answeredFalse, spared);
    }
    std::remove(pattern);
}
