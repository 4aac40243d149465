"""Tests of the checks themselves, over small made-up trees."""

import contextlib
import io
import tempfile
import types
import unittest
from pathlib import Path

import check_layers
import check_lengths
import check_sql
import check_widgets
import check_words
import functions
import tree


class MadeUpTree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def complaints(self, check, **arguments):
        self.printed = io.StringIO()
        with contextlib.redirect_stdout(self.printed):
            return check(self.root, types.SimpleNamespace(**arguments))

    def assertOneComplaint(self, complaints, *parts):
        self.assertEqual(len(complaints), 1, complaints)
        for part in parts:
            self.assertIn(part, complaints[0])


class Statements(MadeUpTree):
    def complaints_about(self, line, file="src/library/A.cpp"):
        self.write(file, line + "\n")
        return self.complaints(check_sql.check)

    def test_values_in_places_and_pieces_are_allowed(self):
        for line in ('rows.Open(u"select * from T where 姓名=?"_s, {name}, conn);',
                     'sqlWith(u"select %1 from T"_s, {SqlPiece::name(column)});',
                     'rows.Open(u"select * from T "\n    "where a=1"_s, conn);',
                     'say(u"selected"_s + name); // where 姓名= + name'):
            with self.subTest(line):
                self.assertEqual(self.complaints_about(line), [])

    def test_a_statement_joined_to_something_is_refused(self):
        for line in ('u"select * from T where 姓名='"'"'"_s + name',
                     'x + u" order by 班级"_s',
                     'u"update T set %1"_s.arg(name)',
                     'u"select a "\n    "from T where b="_s + b',
                     'sql += u" where 姓名="_s;',
                     'sql.append(u" order by 班级"_s);',
                     'sql.prepend(u"select * from T "_s);',
                     'sql.replace(u"?"_s, u" where 姓名="_s);',
                     'QString(u"select * from T"_s).append(name);',
                     'QString(u"select * from X"_s).replace(u"X"_s, name);'):
            with self.subTest(line):
                self.assertOneComplaint(self.complaints_about(line), "src/library/A.cpp:1",
                                        "puts SQL together")

    def test_the_folder_of_the_engine_may(self):
        self.assertEqual(self.complaints_about('u"select * from "_s + name',
                                               "src/platform/database/A.cpp"), [])


class Layers(MadeUpTree):
    def including(self, file, *names):
        self.write(file, "".join(f'#include "{name}"\n' for name in names))
        return self.complaints(check_layers.check)

    def test_down_and_level_in_the_own_folder_is_allowed(self):
        self.assertEqual(self.including("src/scoring/Ranks.cpp", "scoring/Ranks.h",
                                        "library/Catalogue.h", "platform/database/Sql.h",
                                        "platform/runtime/Text.h"), [])

    def test_up_is_refused(self):
        self.assertOneComplaint(self.including("src/library/Settings.h", "scoring/Ranks.h"),
                                "src/library/Settings.h:1", "goes up from library to scoring")

    def test_every_layer_refuses_the_one_above(self):
        order = ["platform/runtime", "platform/database", "platform/grid", "workbooks", "library", "scoring", "statistics", "import",
                 "shell", "main"]
        for lower, upper in zip(order, order[1:]):
            with self.subTest(lower):
                self.assertOneComplaint(self.including("src/" + lower + "/A.cpp", upper + "/B.h"),
                                        "goes up")
                self.including("src/" + lower + "/A.cpp")

    def test_subsystems_of_one_height_do_not_know_each_other(self):
        for file, name in (("import/A.cpp", "export/B.h"), ("maintenance/A.cpp", "workbench/B.h"),
                           ("platform/widgets/A.cpp", "platform/database/B.h"),
                           ("platform/grid/A.cpp", "platform/chart/B.h"),
                           ("library/A.cpp", "oldlibraries/B.h"),
                           ("cli/A.cpp", "shell/B.h")):
            with self.subTest(file):
                self.assertOneComplaint(self.including("src/" + file, name), "sideways")
                self.including("src/" + file)

    def test_an_include_is_written_from_src(self):
        self.assertOneComplaint(self.including("src/library/Settings.cpp", "Settings.h"),
                                "not written from src/")

    def test_engines_do_not_include_screens(self):
        self.assertOneComplaint(self.including("src/workbench/A.cpp", "workbench/ui/FormKaoShi.h"),
                                "is a screen")
        self.assertOneComplaint(self.including("src/workbench/A.cpp",
                                               "platform/grid/ui/FlexGridView.h"), "is a screen")

    def test_the_command_line_does_not_include_screens(self):
        self.assertOneComplaint(self.including("src/cli/A.cpp", "platform/grid/ui/View.h"),
                                "is a screen")

    def test_what_paints_is_for_screens_other_painters_and_the_command_line(self):
        painter = "platform/chart/paint/ChartPainter.h"
        for file in ("workbooks/ui/A.cpp", "individual/paint/A.cpp", "cli/A.cpp", "main/A.cpp"):
            with self.subTest(file):
                self.assertEqual(self.including("src/" + file, painter), [])
        self.assertOneComplaint(self.including("src/workbooks/model/A.cpp", painter), "paints")

    def test_screens_shell_and_main_include_screens(self):
        self.including("src/workbench/ui/FormKaoShi.cpp", "platform/grid/ui/FlexGridView.h")
        self.including("src/shell/FormMain.cpp", "workbench/ui/FormKaoShi.h")
        self.assertEqual(self.including("src/main/main.cpp", "shell/FormMain.h",
                                        "workbench/ui/FormKaoShi.h"), [])

    def test_a_screen_keeps_the_direction_too(self):
        self.assertOneComplaint(self.including("src/import/ui/A.cpp", "export/ui/B.h"), "sideways")

    def test_a_file_in_no_layer_is_told(self):
        self.assertOneComplaint(self.including("src/helpers/A.cpp"), "stands in no layer")


class Widgets(MadeUpTree):
    def setUp(self):
        super().setUp()
        self.write("qt/QtCore/QString", "")
        self.write("qt/QtCore/qglobal.h", "")
        self.write("qt/QtGui/QPainter", "")

    def found(self):
        return self.complaints(check_widgets.check, qtcore=self.root / "qt/QtCore",
                               qtgui=self.root / "qt/QtGui")

    def test_qtcore_and_the_standard_library_are_allowed(self):
        self.write("src/library/A.cpp", "#include <QString>\n#include <qglobal.h>\n"
                                        "#include <QtCore/QFile>\n#include <vector>\n")
        self.assertEqual(self.found(), [])

    def test_every_other_qt_header_is_refused_in_an_engine(self):
        for name in ("QWidget", "QColor", "QtWidgets", "QtWidgets/QLabel", "qwidget.h"):
            with self.subTest(name):
                self.write("src/library/A.h", f"#include <{name}>\n")
                self.assertOneComplaint(self.found(), "src/library/A.h:1", name)

    def test_the_precompiled_header_counts_as_engine(self):
        self.write("cmake/Precompiled.h", "#include <QWidget>\n")
        self.write("cmake/PrecompiledScreens.h", "#include <QWidget>\n")
        self.assertOneComplaint(self.found(), "cmake/Precompiled.h:1")

    def test_screens_may_know_widgets(self):
        for folder in ("workbench/ui", "platform/grid/ui", "platform/widgets", "shell", "main"):
            self.write(f"src/{folder}/A.cpp", "#include <QWidget>\n")
        self.assertEqual(self.found(), [])

    def test_what_paints_may_know_qtgui_and_no_widget(self):
        self.write("src/platform/chart/paint/A.cpp", "#include <QPainter>\n#include <QString>\n")
        self.write("src/platform/chart/paint/CMakeLists.txt",
                   "yunshan_paint(chart DEPENDS Qt6::Gui yunshan_grid_paint)\n")
        self.assertEqual(self.found(), [])
        self.write("src/platform/chart/paint/A.cpp", "#include <QWidget>\n")
        self.assertOneComplaint(self.found(), "src/platform/chart/paint/A.cpp:1", "QtCore or QtGui")

    def test_the_command_line_may_not(self):
        for name in ("QWidget", "QPainter"):
            with self.subTest(name):
                self.write("src/cli/A.cpp", f"#include <{name}>\n")
                self.assertOneComplaint(self.found(), "src/cli/A.cpp:1")

    def test_the_command_line_links_what_paints_and_an_engine_does_not(self):
        line = "target_link_libraries(yunshan PRIVATE yunshan_chart_paint)"
        self.write("src/cli/CMakeLists.txt", line)
        self.assertEqual(self.found(), [])
        self.write("src/workbooks/CMakeLists.txt", line)
        self.assertOneComplaint(self.found(), "src/workbooks/CMakeLists.txt", "yunshan_chart_paint")

    def test_linking_widgets_to_an_engine_is_refused(self):
        for line in ("yunshan_engine(grid DEPENDS Qt6::Widgets)",
                     "target_link_libraries(yunshan_grid PUBLIC\n  Qt6::Gui)",
                     "target_link_libraries(yunshan_grid PUBLIC yunshan_workbooks_ui)",
                     "target_link_libraries(yunshan_grid PUBLIC yunshan_widgets)"):
            with self.subTest(line):
                self.write("src/platform/grid/CMakeLists.txt", line)
                self.assertOneComplaint(self.found(), "src/platform/grid/CMakeLists.txt")

    def test_linking_widgets_to_screens_is_allowed(self):
        self.write("src/platform/grid/CMakeLists.txt",
                   "# Qt6::Widgets\nyunshan_engine(grid DEPENDS Qt6::Core)\n"
                   "target_link_libraries(yunshan_grid_ui PUBLIC Qt6::Widgets yunshan_workbooks_ui)\n"
                   "yunshan_screens(grid DEPENDS Qt6::PrintSupport)\n")
        self.assertEqual(self.found(), [])


class FindingFunctions(unittest.TestCase):
    def names_and_lengths(self, text):
        return [(f.name, f.length) for f in functions.functions(text)]

    def test_a_function_with_its_brace_on_a_line_of_its_own(self):
        self.assertEqual(self.names_and_lengths("int a;\n\nint f(int x)\n{\n    return x;\n}\n"),
                         [("f", 4)])

    def test_a_signature_over_several_lines_counts(self):
        self.assertEqual(self.names_and_lengths("void f(int a,\n       int b)\n{\n}\n"), [("f", 4)])

    def test_a_comment_above_does_not_count(self):
        self.assertEqual(self.names_and_lengths("/// Long\n/// words.\nvoid f()\n{\n}\n"),
                         [("f", 3)])

    def test_lambdas_and_local_classes_belong_to_their_function(self):
        text = ("void f()\n{\n    const auto g = [](int i) {\n        return i;\n    };\n"
                "    struct Local { int h() { return 1; } };\n}\n")
        self.assertEqual(self.names_and_lengths(text), [("f", 7)])

    def test_methods_in_a_class_in_a_namespace(self):
        text = ("namespace a {\nclass B final : public C\n{\n    Q_OBJECT\n\npublic:\n"
                "    int one() const { return 1; }\n    void two() override {}\n\nprivate:\n"
                "    int m_x = 0;\n};\n} // namespace a\n")
        self.assertEqual(self.names_and_lengths(text), [("one", 1), ("two", 1)])

    def test_a_constructor_with_initialisers_in_braces(self):
        text = "A::A(int x)\n    : m_a(x), m_b{x}, m_c{1, 2}\n{\n    run();\n}\n"
        self.assertEqual(self.names_and_lengths(text), [("A::A", 5)])

    def test_tables_are_no_functions(self):
        text = ("const Row rows[] = {{1, f(2)}, {3, 4}};\nstd::array<Row, 1> more{{{f(1), 2}}};\n"
                "enum class E { A, B };\nvoid f(Row row = Row{1})\n{\n}\n")
        self.assertEqual(self.names_and_lengths(text), [("f", 3)])

    def test_operators_and_templates(self):
        text = ("template <class T = int> bool operator==(const T& a, const T& b)\n{\n}\n"
                "A& A::operator=(const A& other)\n{\n    return *this;\n}\n")
        self.assertEqual(self.names_and_lengths(text),
                         [("operator==", 3), ("A::operator=", 4)])

    def test_test_bodies_are_functions(self):
        self.assertEqual(self.names_and_lengths("TEST(Ranks, EqualScores)\n{\n    f();\n}\n"),
                         [("TEST(Ranks, EqualScores)", 4)])

    def test_braces_in_texts_and_comments_do_not_count(self):
        text = ("void f()\n{\n    // }\n    g(\"}\", '{', u\"\\\"}\"_s, 1'000, R\"(})\");\n"
                "#define X }\n}\nvoid h()\n{\n}\n")
        self.assertEqual(self.names_and_lengths(text), [("f", 6), ("h", 3)])


class Lengths(MadeUpTree):
    def function(self, lines, inside=""):
        return "void f()\n{\n" + inside + "    g();\n" * (lines - 3) + "}\n"

    def found(self, text):
        self.write("src/library/A.cpp", text)
        return self.complaints(check_lengths.check)

    def test_eighty_lines_pass_and_eighty_one_do_not(self):
        self.assertEqual(self.found(self.function(80)), [])
        self.assertOneComplaint(self.found(self.function(81)), "src/library/A.cpp:1", "f has 81")

    def test_a_reason_above_or_inside_lets_a_long_function_pass(self):
        reason = "    // Long because the table is one.\n"
        self.assertEqual(self.found("// Sums.\n// Long because it is.\n" + self.function(99)), [])
        self.assertEqual(self.found(self.function(99, reason)), [])

    def test_a_reason_elsewhere_or_without_words_does_not_count(self):
        self.assertEqual(len(self.found("// Long because it is.\n\n" + self.function(99))), 1)
        self.assertEqual(len(self.found("// Long because\n" + self.function(99))), 1)

    def test_a_long_file_needs_a_reason_in_its_head(self):
        lines = "int a;\n" * 500
        self.assertEqual(self.found(lines), [])
        self.assertOneComplaint(self.found(lines + "int b;\n"), "501 lines")
        self.assertEqual(self.found("// Long because it is a table.\n" + lines), [])

    def test_test_bodies_are_checked_too(self):
        self.write("tests/library/ATest.cpp", "TEST(A, B)\n" + self.function(81).split("\n", 1)[1])
        self.assertOneComplaint(self.complaints(check_lengths.check), "TEST(A, B) has 81")

    def test_the_spread_is_printed(self):
        self.found("".join(f"void f{n}()\n{{\n" + "    g();\n" * n + "}\n" for n in range(20)))
        printed = self.printed.getvalue()
        self.assertIn("src: 20 functions, median 12 lines, 95 % have at most 21", printed)
        self.assertIn("  22 f19  (src/library/A.cpp:", printed)
        self.assertNotIn(" f9 ", printed)


class Words(MadeUpTree):
    def found(self, name, text):
        self.write(name, text)
        return self.complaints(check_words.check)

    def test_plain_files_are_in_order(self):
        self.assertEqual(self.found("docs/a.md", "A part of the whole, 3 partly XXSZ.\n"), [])

    def test_words_that_no_file_may_carry(self):
        for text in ("Pa" "rt 3.2", "Pa" "rts 1 and 2", "the sp" "ec says", "a Sp" "ecification",
                     "/wo" "rk/main", "/tm" "p/x", "规格" "书"):
            with self.subTest(text):
                self.assertOneComplaint(self.found("docs/a.md", "ok\n" + text + "\n"),
                                        "docs/a.md:2", text)

    def test_promises_are_refused_in_code_but_not_in_documents(self):
        for text in ("// TO" "DO", "// FIX" "ME: x", "// X" "XX", "a st" "ub", "good for n" "ow"):
            with self.subTest(text):
                self.write("docs/a.md", text)
                self.assertOneComplaint(self.found("src/a.cpp", text), "leaves a promise")

    def test_tests_that_do_not_test_are_refused(self):
        for text in ("QS" "KIP(\"x\");", "GTEST_S" "KIP();", "TEST(A, DISAB" "LED_B)"):
            with self.subTest(text):
                self.write("src/a.cpp", text)
                self.assertOneComplaint(self.found("tests/a.cpp", text), "tests/a.cpp:1")

    def test_build_folders_and_binary_files_are_passed_over(self):
        self.write("build/dev/a.txt", "/wo" "rk/main")
        self.assertEqual(self.found("data/a.bin", "\0 /wo" "rk/main"), [])


class ExitCode(MadeUpTree):
    def test_a_complaint_makes_the_check_fail(self):
        import sys
        former = sys.argv
        self.addCleanup(setattr, sys, "argv", former)
        sys.argv = ["check", str(self.root)]
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            self.assertEqual(tree.main(lambda root, arguments: []), 0)
            self.assertEqual(tree.main(lambda root, arguments: ["a: wrong"]), 1)
        self.assertIn("a: wrong\n1 complaints", printed.getvalue())


if __name__ == "__main__":
    unittest.main()
