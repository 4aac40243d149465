#include "workbooks/readers/ReadError.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

/// The sentence about a file; %1 stands for its path.
QString sentence(Fault fault)
{
    switch (fault) {
    case Fault::Missing:
        return u"找不到文件 %1。"_s;
    case Fault::NoFile:
        return u"%1 不是文件，不能作为工作簿打开。"_s;
    case Fault::Unreadable:
        return u"无法读取文件 %1，请检查是否有权限读取。"_s;
    case Fault::Empty:
        return u"%1 是空文件，里面没有任何内容。"_s;
    case Fault::Password:
        return u"%1 设有打开密码。请先在电子表格软件中取消密码，另存后再试。"_s;
    case Fault::CutOffXls:
        return u"%1 不完整或已损坏：.xls 文件的内容在中途断开。请重新复制或下载后再试。"_s;
    case Fault::CutOffXlsx:
        return u"%1 不完整或已损坏：.xlsx 文件的压缩包无法读完。请重新复制或下载后再试。"_s;
    case Fault::BadXml:
        return u"%1 已损坏：工作簿内部的 XML 内容有错误。"_s;
    case Fault::UnsafeXml:
        return u"%1 含有不安全的内容（XML 文档类型或实体声明），已拒绝读取。"_s;
    case Fault::TooLarge:
        return u"%1 的内容过大，超出了可以读取的范围，已停止读取。"_s;
    case Fault::WebPage:
        return u"%1 其实是网页文件，不是工作簿。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
    case Fault::XmlTable:
        return u"%1 其实是 XML 表格文件，不是工作簿。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
    case Fault::PlainText:
        return u"%1 其实是纯文本文件，不是工作簿。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
    case Fault::OldBook:
        return u"%1 是很早版本的工作簿，无法读取。请用电子表格软件打开它，另存为 .xlsx 后再试。"_s;
    case Fault::BinaryBook:
        return u"%1 是二进制工作簿（.xlsb），无法读取。请用电子表格软件另存为 .xlsx 后再试。"_s;
    case Fault::OpenDocument:
        return u"%1 是 .ods 表格，无法读取。请用电子表格软件另存为 .xlsx 后再试。"_s;
    case Fault::NoWorkbook:
        return u"%1 里面没有工作簿，可能是其他类型的文档。"_s;
    case Fault::Unknown:
        break;
    }
    return u"%1 不是可以识别的工作簿文件。"_s;
}

} // namespace

ReadError::ReadError(Fault fault, const QString& path)
    : runtime::Error(sentence(fault).replace(u"%1"_s, path)), m_fault(fault)
{
}

} // namespace excel
