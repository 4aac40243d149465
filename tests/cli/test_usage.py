"""Wrong command lines end with 2, help with 0; what is wrong is said in Chinese on stderr."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import yunshan
from yunshan import DONE, USAGE

COMMANDS = ("new", "convert", "import-students", "import-exam", "score", "browse", "export",
            "student", "class-charts", "info")


class Usage(yunshan.ProgramTest):
    def wrong(self, *arguments):
        result = self.run_program(*arguments, expect=USAGE)
        self.assertEqual(result.out, "")
        return result.err.splitlines()

    def test_help_names_every_command(self):
        for word in ("--help", "help"):
            result = self.run_program(word)
            self.assertEqual(result.err, "")
            for command in COMMANDS:
                self.assertIn(f"yunshan-cli {command} ", result.out)
            self.assertIn("退出码：0 完成，1 出错或没有完成，2 用法不正确。", result.out)

    def test_every_command_has_its_own_help(self):
        for command in COMMANDS:
            result = self.run_program(command, "--help")
            self.assertEqual(result.err, "")
            self.assertTrue(result.out.startswith(f"yunshan-cli {command} "), result.out)
            for other in set(COMMANDS) - {command}:
                self.assertNotIn(f"yunshan-cli {other} ", result.out)

    def test_help_of_a_command_needs_no_other_argument(self):
        result = self.run_program("import-exam", "没有.CJK", "--help")
        self.assertTrue(result.out.startswith("yunshan-cli import-exam "))

    def test_no_command(self):
        self.assertEqual(self.wrong()[0], "缺少命令。")

    def test_unknown_command(self):
        self.assertEqual(self.wrong("删除")[0], "不认识的命令：删除")

    def test_missing_positionals(self):
        for command in COMMANDS:
            self.assertEqual(self.wrong(command)[0], "缺少参数。", command)
        for command in ("import-students", "import-exam", "score"):
            self.assertEqual(self.wrong(command, "a.CJK")[0], "缺少参数。", command)

    def test_surplus_positionals(self):
        self.assertEqual(self.wrong("info", "a.CJK", "b.CJK")[0], "多余的参数：b.CJK")
        self.assertEqual(self.wrong("import-exam", "a", "b", "c")[0], "多余的参数：c")

    def test_unknown_option(self):
        for command in COMMANDS:
            self.assertEqual(self.wrong(command, "a.CJK", "b", "--色")[0],
                             "不认识的选项：--色", command)

    def test_option_without_its_value(self):
        self.assertEqual(self.wrong("browse", "a.CJK", "--exam")[0], "选项 --exam 缺少值。")

    def test_switch_with_a_value(self):
        self.assertEqual(self.wrong("new", "a.CJK", "--force=1")[0], "不认识的选项：--force=1")

    def test_doubled_option(self):
        self.assertEqual(self.wrong("browse", "a.CJK", "--exam", "A", "--exam", "B")[0],
                         "选项 --exam 出现了两次。")
        self.assertEqual(self.wrong("new", "a.CJK", "--force", "--force")[0],
                         "选项 --force 出现了两次。")

    def test_values_that_are_none_of_the_choices(self):
        cases = ((("browse", "a", "--exam", "A", "--format", "csv"), "--format", "tsv、json"),
                 (("import-exam", "a", "b", "--exam", "A", "--on-mismatch", "maybe"),
                  "--on-mismatch", "cancel、replace、keep"),
                 (("import-exam", "a", "b", "--exam", "A", "--on-unknown", "maybe"),
                  "--on-unknown", "skip、add"),
                 (("import-exam", "a", "b", "--exam", "A", "--accept-overwrite", "yes"),
                  "--accept-overwrite", "original、this-exam"))
        for arguments, option, choices in cases:
            self.assertEqual(self.wrong(*arguments)[0], f"选项 {option} 的值只能是：{choices}")

    def test_full_marks_that_are_no_marks(self):
        for text in ("语文", "语文=", "语文=0", "语文=-5", "语文=abc", "语文=1e39"):
            self.assertEqual(self.wrong("import-exam", "a", "b", "--exam", "A",
                                        "--full-marks", text)[0],
                             f"满分不正确：{text}（应为 科目=满分）")

    def test_browse_needs_an_exam_or_a_statement(self):
        for options in ((), ("--exam", ""), ("--exam=",), ("--exam", " , ")):
            self.assertEqual(self.wrong("browse", "a.CJK", *options)[0], "缺少选项 --exam。")

    def test_the_usage_follows_what_is_wrong(self):
        lines = self.wrong("info")
        self.assertEqual(lines[1], "yunshan-cli info LIB")

    def test_everything_behind_two_dashes_is_a_name(self):
        result = self.run_program("info", "--", "--没有.CJK", expect=yunshan.ERROR)
        self.assertIn("--没有.CJK\n库文件不存在！", result.err)


class Locale(yunshan.ProgramTest):
    def test_chinese_stays_chinese_under_the_plain_locale(self):
        environment = yunshan.environment(self.folder) | {"LC_ALL": "C"}
        result = self.run_program("new", self.library, "--subjects", "语文,总分", env=environment)
        self.assertEqual(result.out, "")
        self.assertTrue(result.err.endswith("新建数据库成功，现在将设置学生信息。\n"), result.err)
        self.assertEqual(self.run_program("info", "试验.CJK", env=environment)
                         .json()["Columns"]["All"], ["语文", "总分"])
        self.assertEqual(self.run_program("--help", env=environment, expect=DONE).err, "")


if __name__ == "__main__":
    yunshan.main()
