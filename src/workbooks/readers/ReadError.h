#pragma once

#include <QString>

#include "platform/runtime/Error.h"

namespace excel {

/// What can be wrong with a file that should be a workbook.
enum class Fault {
    Missing,
    NoFile,
    Unreadable,
    Empty,
    Password,
    CutOffXls,
    CutOffXlsx,
    BadXml,
    UnsafeXml,
    TooLarge,
    WebPage,
    XmlTable,
    PlainText,
    OldBook,
    BinaryBook,
    OpenDocument,
    NoWorkbook,
    Unknown
};

/// A workbook that cannot be read, with a sentence of its own for each fault.
class ReadError : public runtime::Error
{
public:
    ReadError(Fault fault, const QString& path);
    Fault fault() const { return m_fault; }

private:
    Fault m_fault;
};

/// What the inner parts of the readers throw; `readWorkbook` turns it into a ReadError.
struct ReadFailure
{
    Fault fault;
};

} // namespace excel
