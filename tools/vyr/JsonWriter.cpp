#include "JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace vyr {

void JsonWriter::BeforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (!m_hasElement.empty()) {
        if (m_hasElement.back())
            m_text += ',';
        m_hasElement.back() = true;
    }
}

void JsonWriter::BeginObject() {
    BeforeValue();
    m_text += '{';
    m_hasElement.push_back(false);
}

void JsonWriter::EndObject() {
    m_text += '}';
    m_hasElement.pop_back();
}

void JsonWriter::BeginArray() {
    BeforeValue();
    m_text += '[';
    m_hasElement.push_back(false);
}

void JsonWriter::EndArray() {
    m_text += ']';
    m_hasElement.pop_back();
}

void JsonWriter::Key(const std::string& key) {
    BeforeValue();
    Escaped(key);
    m_text += ':';
    m_afterKey = true;
}

void JsonWriter::String(const std::string& utf8) {
    BeforeValue();
    Escaped(utf8);
}

void JsonWriter::Number(double value) {
    BeforeValue();
    if (!std::isfinite(value)) {
        m_text += "null";
        return;
    }
    // Shortest text that reads back to the same double, whatever the process locale.
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    m_text.append(buffer, result.ptr);
}

void JsonWriter::Integer(long long value) {
    BeforeValue();
    m_text += std::to_string(value);
}

void JsonWriter::Bool(bool value) {
    BeforeValue();
    m_text += value ? "true" : "false";
}

void JsonWriter::Escaped(const std::string& utf8) {
    m_text += '"';
    for (unsigned char c : utf8) {
        switch (c) {
            case '"':
                m_text += "\\\"";
                break;
            case '\\':
                m_text += "\\\\";
                break;
            case '\n':
                m_text += "\\n";
                break;
            case '\r':
                m_text += "\\r";
                break;
            case '\t':
                m_text += "\\t";
                break;
            default:
                if (c < 0x20) {
                    char buffer[8];
                    std::snprintf(buffer, sizeof buffer, "\\u%04x", c);
                    m_text += buffer;
                } else {
                    m_text += static_cast<char>(c);
                }
        }
    }
    m_text += '"';
}

}  // namespace vyr
