"""What the search by mutation makes of a line, and what it leaves alone."""

import unittest

import mutations


def faults(line, before=";", kind=None):
    """The changed lines, without the blanks in front."""
    return [after.strip() for found, after in mutations.of_line(line, before)
            if kind in (None, found)]


class Faults(unittest.TestCase):
    def test_a_comparison_moves_its_edge_or_turns_round(self):
        self.assertEqual(faults("while (a < b) {"), ["while (a <= b) {"])
        self.assertEqual(faults("return a == b;"), ["return a != b;"])

    def test_each_sign_is_changed_by_itself(self):
        self.assertEqual(faults("return a && b && c;"),
                         ["return a || b && c;", "return a && b || c;"])

    def test_numbers_are_one_too_large(self):
        self.assertEqual(faults("const int rows = 9;"), ["const int rows = 10;"])
        self.assertEqual(faults("const double share = 0.5;"), [])
        self.assertEqual(faults("int column1 = m_row2[i];"), [])

    def test_conditions_and_choices_turn_round(self):
        self.assertEqual(faults("    } else if (known(a)) {"), ["} else if (!(known(a))) {"])
        self.assertEqual(faults("    text = short ? a : b;", kind="choice"),
                         ["text = short ? b : a;"])
        self.assertEqual(faults("    if constexpr (isText) {"), [])

    def test_statements_are_left_out_and_declarations_stay(self):
        self.assertEqual(faults("    m_rows.clear();"), [";"])
        self.assertEqual(faults("    m_rows = rows;"), [";"])
        self.assertEqual(faults("    finish();"), [";"])
        self.assertEqual(faults("    QString text;"), [])
        self.assertEqual(faults("    const int count = rows.size();"), [])
        self.assertEqual(faults("        std::move(rows));", before="    add(text,"), [])

    def test_only_a_guarded_return_is_left_out(self):
        self.assertEqual(faults("        return rows;", before="    if (found)"), [";"])
        self.assertEqual(faults("    return rows;", before="    sort();"), [])

    def test_texts_and_comments_are_left_alone(self):
        self.assertEqual(faults('    show(u"a < b, 1 \\" && true"_s, x);'), [";"])
        self.assertEqual(faults("// if (a < b)"), [])
        self.assertEqual(faults('#include "a/1.h"'), [])
        self.assertEqual(faults('return u"甲"_s + text;'), [], "texts have no minus")

    def test_lines_are_counted_and_code_above_is_found_over_comments(self):
        found = mutations.of_text("a.cpp", "if (a)\n    // why\n    return;\n")
        self.assertEqual([(line[0].line, line[0].kind) for line in found],
                         [(1, "negation"), (3, "left out")])


if __name__ == "__main__":
    unittest.main()
