// What could mean two things is asked, and no row is lost without a word.
#include <QDir>
#include <QTemporaryDir>

#include "import/tidy/RememberedMappings.h"

#include "TidyFixture.h"

namespace tidy {
namespace {

class TwoMeanings : public TidyFixture
{
};

TEST_F(TwoMeanings, HeadingsAreReadFromTwoRowsAtMost)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 9}});
    Proposal proposal = proposed();
    chooseHeading(proposal, 0, 1, 3);
    EXPECT_EQ(proposal.sheets[0].heading.count, HeadingRows::most);
}

} // namespace
} // namespace tidy
