// write_sample_book FILE.xlsx: writes the sample workbook; prints why it cannot, and gives 1.

#include <cstdio>

#include "platform/runtime/Error.h"
#include "workbooks/writers/SampleBook.h"

int main(int count, char* arguments[])
{
    if (count != 2) {
        std::fprintf(stderr, "usage: write_sample_book FILE.xlsx\n");
        return 2;
    }
    try {
        excel::Workbook book;
        fillSampleBook(book);
        book.SaveAs(QString::fromUtf8(arguments[1]));
    } catch (const runtime::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
