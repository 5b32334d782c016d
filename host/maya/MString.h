#pragma once
#include <string>
#include <maya/MApiNamespace.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MString
{
public:
    MString();
    MString(const char* text);
    MString(const char* text, int length);
    MString(const wchar_t* text);
    MString(const MString& other) = default;
    MString(MString&& other) noexcept = default;
    ~MString() = default;

    MString& operator=(const MString& other) = default;
    MString& operator=(MString&& other) noexcept = default;
    MString& operator=(const char* text);
    MString& operator+=(const MString& other);
    MString& operator+=(const char* text);
    MString& operator+=(char c);
    MString& operator+=(int value);
    MString& operator+=(unsigned int value);
    MString& operator+=(double value);
    MString operator+(const MString& other) const;
    MString operator+(const char* text) const;

    bool operator==(const MString& other) const;
    bool operator==(const char* text) const;
    bool operator!=(const MString& other) const;
    bool operator!=(const char* text) const;

    const char* asChar() const;
    const char* asChar(int& length) const;
    const char* asUTF8() const;
    const char* asUTF8(int& length) const;
    unsigned int length() const;
    unsigned int numChars() const;
    void clear();
    bool isEmpty() const;
    MString& set(const char* text);
    int index(char c) const;
    int rindex(char c) const;
    MString substring(int start, int end) const;
    MString substringW(int start, int end) const;
    bool isInt() const;
    int asInt() const;
    bool isDouble() const;
    double asDouble() const;
    MString toLowerCase() const;
    MString toUpperCase() const;
    void split(char delimiter, MStringArray& output) const;

private:
    std::string text_;
};

MString operator+(const char* left, const MString& right);

OPENMAYA_MAJOR_NAMESPACE_CLOSE
