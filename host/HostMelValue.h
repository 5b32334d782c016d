#pragma once
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include "HostCommandResult.h"

// A MEL value: nothing, an int, a float, a string, or an array of one of those.
class HostMelValue
{
public:
    enum class Type
    {
        None,
        Int,
        Float,
        String,
        IntArray,
        FloatArray,
        StringArray
    };

    HostMelValue() = default;
    static HostMelValue FromInt(int value);
    static HostMelValue FromFloat(double value);
    static HostMelValue FromString(const QString& value);
    static HostMelValue FromStringList(const QStringList& values);
    static HostMelValue FromNumbers(const QList<double>& values, bool integers);
    static HostMelValue Default(Type type);
    static HostMelValue FromCommandResult(const MCommandResult& result);

    Type GetType() const { return type_; }
    bool IsNone() const { return type_ == Type::None; }
    bool IsArray() const;
    bool IsNumber() const { return type_ == Type::Int || type_ == Type::Float; }
    static bool IsArrayType(Type type);
    static Type ElementType(Type arrayType);
    static Type ArrayType(Type elementType);

    int ToInt() const;
    double ToDouble() const;
    QString ToString() const;
    // Arrays element by element; a scalar as a list of one; nothing as an empty list.
    QStringList ToStringList() const;
    bool IsTrue() const;

    int Size() const;
    HostMelValue At(int index) const;
    // Grows the array with default elements as MEL does.
    void SetAt(int index, const HostMelValue& element);
    void Append(const HostMelValue& element);

    // MEL's conversions on assignment; false where none exists (array to scalar and back).
    bool ConvertTo(Type type, HostMelValue& result) const;

    void ToCommandResult(HostCommandResult& result) const;
    // As Maya shows a result: array elements separated by spaces.
    QString DisplayText() const;

    static QString FormatFloat(double value);
    // MEL reads the leading number of a string, so "12abc" is 12 and "abc" 0.
    static double LeadingNumber(const QString& text);

private:
    Type type_ = Type::None;
    double number_ = 0.0;   // Int and Float
    QString string_;        // String
    QList<double> numbers_; // IntArray and FloatArray
    QStringList strings_;   // StringArray
};
