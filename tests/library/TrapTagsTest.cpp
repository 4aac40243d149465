// The tag that each routine of the library shows behind a failure.
#include <functional>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::Catalogue;
using library::Settings;
using support::TestLibrary;

class TrapTags : public testing::Test
{
protected:
    /// Runs a routine that fails and expects every message to end with the tag.
    void expectTag(const QString& tag, const std::function<void()>& routine)
    {
        test.dialogs.failures.clear();
        routine();
        EXPECT_FALSE(test.dialogs.failures.isEmpty()) << tag.toStdString();
        for (const QString& failure : std::as_const(test.dialogs.failures))
            EXPECT_TRUE(failure.endsWith(tag)) << failure.toStdString() << tag.toStdString();
    }

    TestLibrary test{{u"语文"_s, u"总分"_s}};
    Catalogue& catalogue = test.scores.catalogue;
    library::Students& students = test.scores.students;
    library::Teachers& teachers = test.scores.teachers;
    Settings& settings = test.scores.settings;
};

TEST_F(TrapTags, OfTheCatalogueNameTheirRoutine)
{
    const QString exam = u"期中"_s;
    const QString stream = u"理"_s;
    const std::pair<QString, std::function<void()>> routines[] = {
        {u" - Sub GetKeLei/Mdl_MDB"_s, [&] { catalogue.GetKeLei(); }},
        {u" - Sub GetKSXX/Mdl_MDB"_s, [&] { catalogue.GetKSXX(); }},
        {u" - Function GetKSKM/Mdl_MDB"_s, [&] { catalogue.GetKSKM(exam, stream); }},
        {u" - Function GetKSKMZF/Mdl_MDB"_s, [&] { catalogue.GetKSKMZF(exam, stream); }},
        {u" - Function GetZFKMGS/Mdl_MDB"_s, [&] { catalogue.GetZFKMGS(exam, stream); }},
        {u" - Function getKMMF/Mdl_MDB"_s, [&] { catalogue.getKMMF(exam, stream, u"语文"_s); }},
        {u" - Function GetZFMF/Mdl_MDB"_s, [&] { catalogue.GetZFMF(exam, stream, u"总分"_s); }},
        {u" - Function GetKSBH/Mdl_MDB"_s, [&] { catalogue.GetKSBH(exam); }},
        {u" - Function GetLeiBie/Mdl_MDB"_s, [&] { students.GetLeiBie(1); }},
        {u" - Function GetBJKL/Mdl_MDB"_s, [&] { students.GetBJKL(1); }},
        {u" - Function GetZRS/Mdl_MDB"_s, [&] { students.GetZRS(stream, 1); }},
        {u" - Function GetGRXX/Mdl_MDB"_s, [&] { students.GetGRXX(1); }},
        {u" - Function GetMC/Mdl_MDB"_s, [&] { students.GetMC(exam, u"语文年名"_s, 1); }},
        {u" - Function GetJSMD/Mdl_MDB"_s, [&] { teachers.GetJSMD(exam, 1, u"语文"_s); }},
        {u" - Sub GetBJXX/Mdl_MDB"_s,
         [&] {
             catalogue.Streams = QStringList{stream};
             catalogue.GetBJXX();
         }},
    };
    test.scores.Conn.Close();
    for (const auto& [tag, routine] : routines)
        expectTag(tag, routine);
}

TEST_F(TrapTags, OfTheSettingsNameTheirRoutine)
{
    const QString broken = u"a'b"_s;
    const std::pair<QString, std::function<void()>> routines[] = {
        {u" - Function GetSZ/Mdl_MDB"_s, [&] { settings.GetSZ(broken); }},
        {u" - Function GetSZJR/Mdl_MDB"_s, [&] { settings.GetSZJR(broken); }},
        {u" - Function GetXXSZ/Mdl_MDB"_s, [&] { settings.GetXXSZ(u"高分段"_s, broken, {}); }},
        {u" - Sub GetZDYXS/Mdl_MDB"_s, [&] { settings.GetZDYXS(broken); }},
    };
    for (const auto& [tag, routine] : routines)
        expectTag(tag, routine);
}

TEST_F(TrapTags, ACategoryFilterThatCannotBeReadIsToldByGetSZ)
{
    settings.CategoryFilter = u"before"_s;
    test.scores.Conn.Close();
    expectTag(u" - Function GetSZ/Mdl_MDB"_s, [&] { settings.GetTJLB(); });
    EXPECT_EQ(settings.CategoryFilter, u""_s);
}

} // namespace
