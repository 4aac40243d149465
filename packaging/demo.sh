# The demonstration library, made from demo/ by the command line. Sourced from the project's folder;
# `bin` holds the programs, `demo` is the library's path, and the other files come beside it.
# shellcheck shell=bash

subjects=语文,数学,英语,物理,化学,生物,政治,历史,地理,文科总分,理科总分,总分
exams=(高一期中 高一期末 高二月考)

cli()
{
    "$bin/yunshan-cli" "$@"
}

# Each exam comes on two sheets; the second, imported under the same name, is its other stream.
make_demo_library()
{
    local exam sheet
    mkdir -p "$(dirname "$demo")"
    cli new "$demo" --subjects "$subjects" --force
    cli import-students "$demo" demo/学生名单.xlsx --no-backup
    for exam in "${exams[@]}"; do
        for sheet in 文科 理科; do
            cli import-exam "$demo" "demo/$exam.xlsx" --exam "$exam" --sheet "$sheet" --no-backup
        done
    done
    cli score "$demo" "${exams[@]}"
    sqlite3 "$demo" < demo/教师名单.sql
    sqlite3 "$demo" "update 考试名称表 set 备注='示范数据：学校、学生和成绩都是虚构的。'"
    make_demo_photos
}

# The folder 照片 beside the library, as 设置图片 takes it: class 6 has no photos yet, and in class 3
# two are missing.
make_demo_photos()
{
    local folder
    folder=$(dirname "$demo")/照片
    sqlite3 "$demo" "select 班级, 学号, 性别 from 信息表
        where 班级<>6 and not (班级=3 and 学号 in (8, 25)) order by 班级, 学号" |
        sed 's/\.0|/|/g' | "$bin/make_demo_photos" "$folder"
    cli photos "$demo" "$folder" --no-backup
}

# What `yunshan-cli info` says, in a few lines.
summary()
{
    cli info "$demo" | /usr/bin/python3 -c '
import json, sys
library = json.load(sys.stdin)
for stream in library["Streams"]:
    classes = [entry for entry in library["Classes"] if entry["Stream"] == stream]
    numbers = "、".join(str(int(entry["Class"])) for entry in classes)
    print(f"{stream}：{numbers} 班，", sum(entry["Students"] for entry in classes), "人")
print("考试：" + "、".join(library["ExamList"]))
print("科目：" + "、".join(library["Columns"]["All"]))'
}

# One class on paper: the workbook has a page with table and chart for each student, and so has the
# PDF file. Prints their paths.
make_class_files()
{
    local class=1 folder all
    folder=$(dirname "$demo")
    all=$(IFS=,; echo "${exams[*]}")
    cli export "$demo" --exam "$all" --subjects "$subjects" --classes $class --info-row \
        --class-average "${exams[-1]}" --chart --out "$folder/${class}班成绩.xlsx" --force
    cli class-charts "$demo" --class $class --columns 总分,语文,数学 \
        --out "$folder/${class}班分析图.pdf" --force
}

show_demo_library()
{
    local last=${exams[-1]}
    echo
    echo "No display: the demonstration library was made from demo/ by the command line."
    summary
    echo
    echo "The first rows of $last, 理, by 理科总分:"
    cli browse "$demo" --exam "$last" --stream 理 --order 理科总分:desc --format tsv | sed -n 1,11p
    echo
    echo "Averages of ${exams[0]} with ranks and teachers:"
    cli report "$demo" --item 各科平均分 --exam "${exams[0]}"
    echo
    echo "The scores and rank charts of class 1, a page a student:"
    make_class_files
    echo
    echo "Library:  $demo"
    echo "Programs: $bin"
}
