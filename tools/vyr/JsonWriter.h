// A small streaming JSON writer: objects, arrays, strings (escaped), numbers (NaN and the
// infinities, which JSON lacks, become null) and booleans.
#ifndef VYR_TOOLS_JSONWRITER_H
#define VYR_TOOLS_JSONWRITER_H

#include <string>
#include <vector>

namespace vyr {

class JsonWriter {
public:
    void BeginObject();
    void EndObject();
    void BeginArray();
    void EndArray();
    // The key of the next value inside an object.
    void Key(const std::string& key);
    void String(const std::string& utf8);
    void Number(double value);
    void Integer(long long value);
    void Bool(bool value);
    // Key followed by its value, inside an object.
    void Member(const std::string& key, const std::string& utf8) {
        Key(key);
        String(utf8);
    }
    void Member(const std::string& key, const char* utf8) {
        Key(key);
        String(utf8);
    }
    void Member(const std::string& key, double value) {
        Key(key);
        Number(value);
    }
    void Member(const std::string& key, int value) {
        Key(key);
        Integer(value);
    }
    void Member(const std::string& key, unsigned value) {
        Key(key);
        Integer(value);
    }
    void Member(const std::string& key, bool value) {
        Key(key);
        Bool(value);
    }

    const std::string& Text() const { return m_text; }

private:
    void BeforeValue();
    void Escaped(const std::string& utf8);

    std::string m_text;
    // One entry per open container: whether it already holds an element.
    std::vector<bool> m_hasElement;
    bool m_afterKey = false;
};

}  // namespace vyr

#endif
