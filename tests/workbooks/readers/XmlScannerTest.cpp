#include "workbooks/readers/XmlScanner.h"

#include <gtest/gtest.h>

#include "workbooks/readers/Budget.h"
#include "workbooks/readers/ReadError.h"

namespace {

class CountingHandler : public excel::XmlHandler
{
public:
    int elements = 0;

    void startElement(std::string_view, const excel::XmlAttributes&) override
    {
        ++elements;
        collecting = true;
    }
};

/// The length of the text that is collected from an element with so many letters.
size_t collected(size_t letters)
{
    excel::Budget budget;
    CountingHandler handler;
    excel::XmlScanner scanner(handler, budget);
    scanner.feed("<v>");
    scanner.feed(std::string(letters, 'x'));
    scanner.feed("</v>");
    return handler.characters.size();
}

} // namespace

TEST(XmlScanner, AttributesCountLikeElements)
{
    constexpr qint64 markupOfAFile = 14'000'000;
    constexpr int left = 1000;
    excel::Budget budget;
    budget.takeMarkup(markupOfAFile - left);
    CountingHandler handler;
    excel::XmlScanner scanner(handler, budget);
    const std::string element = "<c a='1' b='2' c='3' d='4'/>";
    scanner.feed("<row>");
    EXPECT_THROW(for (int i = 0; i < left; ++i) scanner.feed(element), excel::ReadFailure);
    EXPECT_EQ(handler.elements, left / 5);
}

TEST(XmlScanner, AMillionBytesAreTheLongestText)
{
    EXPECT_EQ(collected(1'000'000), 1'000'000u);
    EXPECT_THROW(collected(1'000'001), excel::ReadFailure);
}
