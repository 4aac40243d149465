"""The upkeep of a library by mouse and keyboard, each step compared with yunshan-cli.

The command line does the same to a copy of the library: after every step both hold the same rows in
every table.
"""

import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import desktop
import yunshan

EXAMS = ("高一期中", "高一期末")
EXAM, LATER = EXAMS
CLASS, NUMBER, SUBJECT, SCORE = 1, 22, "语文", "12.5"
RATE, CUSTOM, OFFER = "各科优秀率", "(使用自定义数据)", "点此设置各科条件"
# A GIF of one pixel: a picture of any kind is a photo, whatever its name.
PICTURE = bytes.fromhex("47494638396101000100800000ff00ffffffff21f904010000000"
                        "02c00000000010001000002024401003b")


class Upkeep(desktop.DesktopTest):
    def test_what_the_screens_do_is_what_the_command_line_does(self):
        self.make_library(self.library, *EXAMS)
        self.cli("score", self.library, *EXAMS)
        self.twin = self.folder / "副本.CJK"
        shutil.copy2(self.library, self.twin)
        self.start(self.library)
        self.running.window("frame", f"云杉学业册 - {self.library}")
        self.correct_a_score()
        self.set_photos()
        self.give_a_photo()
        self.type_and_pick_teachers()
        self.change_a_threshold()
        self.give_conditions_by_subject()
        self.set_streams()
        self.delete_a_subject()

    def open(self, menu, item, title):
        self.running.menu(menu, item)
        self.screen = self.running.window("dialog", title)
        return self.screen

    def press(self, caption):
        self.screen.find("push button", caption).press()

    def leave(self, caption="退出"):
        self.press(caption)
        self.running.gone(self.screen)

    def assertSame(self, *command):
        """The command makes of the copy what the screen has made of the library."""
        result = self.cli(*command)
        self.assertEqual(yunshan.content_hash(self.library), yunshan.content_hash(self.twin),
                         f"{command}\n{result.err}")

    def ranks(self):
        return yunshan.query(self.library, f"select 学号, {SUBJECT}, {SUBJECT}年名, {SUBJECT}班名 "
                             "from 成绩表 where 考试名称=? and 班级=? order by 学号", EXAM, CLASS)

    def correct_a_score(self):
        before = self.ranks()
        self.open("e", "x", "修改成绩")
        self.screen.find("combo box", EXAM)
        self.screen.find("text", "班级").write(str(CLASS))
        self.desktop.press("Return")
        self.desktop.paste(str(NUMBER))
        self.desktop.press("Return", "Return")
        field = self.screen.find("text", "成绩")
        desktop.wait_for("keyboard in the score", lambda: field.has("FOCUSED"))
        self.desktop.paste(SCORE)
        self.desktop.press("Return")
        self.assertEqual(self.running.answer(), "保存新成绩成功！")
        self.screen = self.running.window("dialog", "修改成绩")
        self.press("修改完毕")
        self.assertEqual(self.running.answer("确定", "提示"), "已修改成绩，是否重新计算总分？")
        self.running.gone(self.screen)
        after = self.ranks()
        self.assertEqual([row for row in after if row[0] == NUMBER],
                         [(NUMBER, float(SCORE), 79, 40)])
        self.assertNotEqual(before, after)
        self.assertSame("correct", self.twin, "--exam", EXAM, "--class", CLASS, "--number", NUMBER,
                        "--subject", SUBJECT, "--score", SCORE, "--rescore")

    def make_photos(self):
        """Photos of class 1 by number and of class 2 by name; number 3 of both has none."""
        photos = self.folder / "照片"
        for class_number, number, name in yunshan.query(
                self.library, "select 班级, 学号, 姓名 from 信息表 where 班级<3 and 学号<>3"):
            file = f"{number:g}.jpg" if class_number == 1 else f"{name}.JPG"
            folder = photos / f"{class_number:g}"
            folder.mkdir(parents=True, exist_ok=True)
            (folder / file).write_bytes(PICTURE)
        return photos

    def set_photos(self):
        photos = self.make_photos()
        self.open("d", "t", "设置照片")
        self.screen.find("text", "学生照片所在的文件夹").write(str(photos))
        self.press("确定")
        told = self.running.answer()
        while told != "设置完毕！":
            told = self.running.answer()
        self.running.close(self.running.window("dialog", "设置照片"))
        self.assertEqual(yunshan.query(self.library, "select count(照片), count(照片名) from 信息表"),
                         [(78, 78)])
        self.assertSame("photos", self.twin, photos, "--no-backup")

    def give_a_photo(self):
        """The first student without a photo is chosen from the list and given one by a click."""
        file = self.folder / "三号.gif"
        file.write_bytes(PICTURE)
        self.running.menu("d", "j")
        self.screen = self.running.window("dialog", "修改学生信息")
        missing = self.screen.find("list", "无照片名单")
        name, = yunshan.query(self.library, "select 姓名 from 信息表 where 班级=1 and 学号=3")[0]
        missing.find("list item", name).click()
        grid = self.screen.find("table")
        desktop.wait_for(name, lambda: grid.cell(2, 1).name == name)
        grid.cell(6, 1).click()
        self.running.choose_file(file)
        self.screen = self.running.window("dialog", "修改学生信息")
        self.press("修改")
        desktop.wait_for("the photo", lambda: yunshan.query(
            self.library, "select 照片名 from 信息表 where 班级=1 and 学号=3") == [(file.name,)])
        self.leave()
        self.assertSame("record", self.twin, "--class", 1, "--number", 3, "--photo", file)

    def type_and_pick_teachers(self):
        columns = self.cli("info", self.library).json()["Columns"]["All"]
        chinese = columns.index(SUBJECT) + 1
        self.open("d", "m", "设置教师名单")
        grid = self.screen.find("table", "教师名单")
        grid.cell(1, chinese).click()
        self.desktop.paste("Wang")
        self.desktop.press("Return")
        grid.cell(2, chinese).click()
        self.desktop.press("alt+Down", "space", "Return")
        picked = desktop.wait_for("the first of the list", lambda: grid.cell(2, chinese).name)
        self.press("保存")
        self.running.gone(self.screen)
        self.assertSame("teachers", self.twin, "--exam", EXAM, "--set", f"1:{SUBJECT}=Wang",
                        "--set", f"2:{SUBJECT}={picked}")
        self.copy_the_list(picked, chinese)

    def copy_the_list(self, picked, chinese):
        self.open("d", "m", "设置教师名单")
        self.screen.find("combo box", EXAM).pick(LATER)
        self.press("载入名单")
        self.screen.find("list", "载入哪次考试的名单").find("list item", EXAM).click()
        grid = self.screen.find("table", "教师名单")
        desktop.wait_for(picked, lambda: grid.cell(2, chinese).name == picked)
        self.press("保存")
        self.running.gone(self.screen)
        self.assertSame("teachers", self.twin, "--exam", LATER, "--copy-from", EXAM)

    def setting_row(self, grid):
        rows, _ = grid.size()
        return next(row for row in range(rows) if grid.cell(row, 0).name == RATE)

    def save_settings(self):
        self.press("确定")
        self.assertEqual(self.running.answer(), "设置保存成功！")
        self.running.gone(self.screen)

    def change_a_threshold(self):
        self.open("p", "f", "分析设置")
        grid = self.screen.find("table", "分析设置")
        row = self.setting_row(grid)
        grid.cell(row, 1).click()
        self.desktop.press("ctrl+a")
        self.desktop.paste("[0.7,1]")
        desktop.wait_for("the interval", lambda: grid.cell(row, 1).name == "[0.7,1]")
        self.save_settings()
        self.assertSame("settings", self.twin, "--set", f"{RATE}=[0.7,1]")

    def give_conditions_by_subject(self):
        self.open("p", "f", "分析设置")
        settings = self.screen
        grid = settings.find("table", "分析设置")
        row = self.setting_row(grid)
        self.assertEqual(grid.cell(row, 3).name, OFFER)
        grid.cell(row, 3).click()
        self.screen = self.running.window("dialog", f"设置  {RATE}")
        conditions = self.screen.find("table")
        self.assertEqual(conditions.cells([1], range(6)), [["文", "语文", ">=", "105", "<=", "150"]])
        conditions.cell(1, 3).click()
        self.desktop.press("ctrl+a")
        self.desktop.paste("99")
        desktop.wait_for("the score", lambda: conditions.cell(1, 3).name == "99")
        self.save_settings()
        self.screen = self.running.window("dialog", "分析设置")
        self.assertEqual(grid.cell(row, 1).name, CUSTOM)
        self.save_settings()
        self.assertSame("settings", self.twin, "--conditions", RATE, "--condition",
                        "文:语文:>=99,<=150")

    def set_streams(self):
        self.open("d", "w", "设置科类(文理科)")
        self.screen.find("list").choose("2", "3", "4", "5", "6")
        self.screen.find("check box").press()
        self.press("确定")
        self.running.answer("设置", "提示")
        self.assertEqual(self.running.answer(), "设置完毕！")
        self.screen = self.running.window("dialog", "设置科类(文理科)")
        self.leave()
        self.assertSame("set-streams", self.twin, "--science", "2,3,4,5,6", "--no-backup")

    def delete_a_subject(self):
        self.open("f", "d", "删除科目")
        self.screen.find("list").choose("地理")
        self.screen.find("check box").press()
        self.press("删除")
        asked = self.running.answer("确定", "提示")
        self.assertIn("确实要删除以下科目吗？", asked)
        told = self.running.answer("仍然删除", "提示")
        self.assertIn("要删除的科目还写在：", told)
        self.assertEqual(self.running.answer(), "删除完毕！")
        self.screen = self.running.window("dialog", "删除科目")
        self.leave()
        self.assertSame("delete-subjects", self.twin, "地理", "--yes", "--no-backup")


if __name__ == "__main__":
    desktop.main()
