#include "base/runtime_error.h"

RuntimeError::RuntimeError(int number, const QString &description)
    : std::runtime_error(description.toStdString()), m_number(number), m_description(description)
{}

RuntimeError RuntimeError::Overflow()
{
    return {OverflowNumber, QStringLiteral("Overflow")};
}

RuntimeError RuntimeError::DivisionByZero()
{
    return {DivisionByZeroNumber, QStringLiteral("Division by zero")};
}

RuntimeError RuntimeError::TypeMismatch()
{
    return {TypeMismatchNumber, QStringLiteral("Type mismatch")};
}

RuntimeError RuntimeError::NoCurrentRecord()
{
    return {NoCurrentRecordNumber,
            QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. "
                           "Requested operation requires a current record.")};
}

RuntimeError RuntimeError::ObjectClosed()
{
    return {ObjectClosedNumber,
            QStringLiteral("Operation is not allowed when the object is closed.")};
}

RuntimeError RuntimeError::Store(const QString &description)
{
    return {StoreNumber, description};
}

RuntimeError RuntimeError::Printer()
{
    return {PrinterNumber, QStringLiteral("Printer error")};
}
