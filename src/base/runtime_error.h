#pragma once

/// An error of a routine: a number and a description, as the screens show them.
///
///     "Error number " 6
///     "Description: " "Overflow"
///
/// What a user may well get wrong is a returned value. What breaks is a RuntimeError; it travels to
/// the one handler that owns its words.

#include <QString>

#include <stdexcept>

class RuntimeError : public std::runtime_error
{
public:
    RuntimeError(int number, const QString &description);

    int Number() const { return m_number; }
    const QString &Description() const { return m_description; }

    /// A value does not fit its type: 16-bit counters, 64-bit money, 32-bit floats.
    static RuntimeError Overflow();
    static RuntimeError DivisionByZero();
    /// A text that reads as no number or date.
    static RuntimeError TypeMismatch();
    /// A field was asked for while the cursor stands on no row.
    static RuntimeError NoCurrentRecord();
    /// An operation on a connection or cursor that is closed.
    static RuntimeError ObjectClosed();
    /// A read, write or statement that the store refuses; `description` is the store's own.
    static RuntimeError Store(const QString &description);
    /// The printer, or the file in its place, refused what was printed.
    static RuntimeError Printer();

    enum Numbers
    {
        OverflowNumber = 6,
        DivisionByZeroNumber = 11,
        TypeMismatchNumber = 13,
        FileNotFoundNumber = 53,
        FileExistsNumber = 58,
        DiskFullNumber = 61,
        PermissionDeniedNumber = 70,
        PathAccessNumber = 75,
        PathNotFoundNumber = 76,
        PrinterNumber = 482,
        InvalidArgumentNumber = 5,
        NoCurrentRecordNumber = 3021,
        ObjectClosedNumber = 3704,
        StoreNumber = -2147467259 ///< 0x80004005, also a row that is there already
    };

private:
    int m_number;
    QString m_description;
};
