#include "cli/Command.h"

namespace cli {

using namespace Qt::StringLiterals;

// Long because it is a table: the syntax of each command beside its help.
const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {u"new",
         {{u"subjects"_s}, {u"force"_s, u"trim-formulas"_s}, 1, 1},
         u"yunshan-cli new LIB --subjects 语文,数学,… [--force] [--trim-formulas]\n"
         "    新建成绩库。科目按给出的顺序建立，名称以“总分”结尾的是总分。\n"
         "    --force            文件已存在时覆盖它\n"
         "    --trim-formulas    从总分公式里去掉成绩库没有的科目（默认保持不变）\n",
         runNew},
        {u"convert",
         {{u"password"_s, u"report"_s}, {u"force"_s, u"accept-missing-rows"_s}, 1, 2},
         u"yunshan-cli convert OLD [NEW] [--password TEXT] [--report FILE] [--force]\n"
         "            [--accept-missing-rows]\n"
         "    把旧格式的成绩库转换成新的成绩库，输出它的路径。旧文件保持不变。\n"
         "    NEW                新成绩库（默认在旧文件旁边，名称后面加“（转换）”）\n"
         "    --password TEXT    旧成绩库的密码\n"
         "    --report FILE      把转换的报告存入文件：.xlsx 为工作簿，其余为文本\n"
         "    --force            文件已存在时覆盖它，旧成绩库除外\n"
         "    --accept-missing-rows\n"
         "                       旧文件里少了行，也照样转换读到的（默认不转换）\n",
         runConvert},
        {u"import-students",
         {{u"sheet"_s, u"accept-existing"_s}, {u"no-backup"_s, u"preview"_s}, 2, 2},
         u"yunshan-cli import-students LIB BOOK [--sheet NAME] [--accept-existing skip|add]\n"
         "            [--no-backup] [--preview]\n"
         "    从工作簿导入学生信息。前 3 列必须为：班级、学号、姓名。\n"
         "    --sheet NAME       数据表（默认第一张）\n"
         "    --accept-existing …  班级和学号已经有的人：skip 跳过，add "
         "全部添加；不给出时什么也不导入\n"
         "    --no-backup        导入前不备份成绩库\n"
         "    --preview          什么也不导入，只以 JSON 输出导入会做什么\n",
         runImportStudents},
        {u"import-exam",
         {{u"exam"_s, u"sheet"_s, u"full-marks"_s, u"on-mismatch"_s, u"on-unknown"_s, u"stream"_s,
           u"accept-overwrite"_s},
          {u"existing"_s, u"add-students"_s, u"score"_s, u"no-backup"_s, u"accept-duplicate"_s,
           u"accept-unlisted"_s, u"accept-texts"_s, u"preview"_s},
          2,
          2},
         u"yunshan-cli import-exam LIB BOOK --exam NAME [--sheet NAME] [--existing]\n"
         "            [--full-marks 语文=150,…] [--add-students] [--score]\n"
         "            [--on-mismatch replace|keep|cancel] [--on-unknown add|skip]\n"
         "            [--stream 文|理] [--accept-overwrite original|this-exam]\n"
         "            [--accept-duplicate] [--accept-unlisted] [--accept-texts] [--no-backup]\n"
         "            [--preview]\n"
         "    从工作簿导入一次考试的成绩。\n"
         "    --exam NAME        考试名称；不加 --existing 时按手工输入的新考试处理\n"
         "    --existing         从已有考试中选择，原有数据被新数据替换\n"
         "    --sheet NAME       数据表（默认第一张）\n"
         "    --full-marks …     各科满分；没有给出的科目用 data/满分.txt 的默认值\n"
         "    --add-students     自动添加新名单\n"
         "    --score            导入后计算总分\n"
         "    --on-mismatch …    姓名不一致时：replace 替换，keep 保留，cancel 终止（默认）\n"
         "    --on-unknown …     遇到新学生时：add 添加，skip 不添加（默认，成绩仍然导入）\n"
         "    --stream …         还没有学生的班级的科类\n"
         "    --accept-overwrite …  会覆盖其他考试的成绩时：original 按原规则导入，\n"
         "                       this-exam 只更新本考试\n"
         "    --accept-duplicate 学生已有这次考试的成绩，也再导入一次\n"
         "    --accept-unlisted  考试列表里会看不到这个名称，也导入\n"
         "    --accept-texts     成绩里有缺考、作弊以外的文字，也导入\n"
         "                       没有给出以上选项，遇到这些情况就停止，什么也不导入\n"
         "    --no-backup        导入前不备份成绩库\n"
         "    --preview          什么也不导入，只以 JSON 输出导入会做什么\n",
         runImportExam},
        {u"reclass",
         {{u"sheet"_s, u"on-missing"_s, u"on-mismatch"_s}, {u"no-backup"_s}, 2, 2},
         u"yunshan-cli reclass LIB BOOK [--sheet NAME] [--on-missing delete|keep]\n"
         "            [--on-mismatch replace|keep|cancel] [--no-backup]\n"
         "    重新分班。前 5 列为：班级、学号、姓名、新班级、新学号。\n"
         "    --sheet NAME       数据表（默认第一张）\n"
         "    --on-missing …     表里没有的学生：keep 留在原班（默认），\n"
         "                       delete 删除，连同他现在的班级和学号名下的全部成绩\n"
         "    --on-mismatch …    姓名不一致的学生：replace 改名，keep、cancel 不改名（默认）；\n"
         "                       都留在原班\n"
         "    --no-backup        写入前不备份成绩库\n",
         runReclass},
        {u"tidy",
         {{u"as"_s, u"library"_s, u"map"_s, u"mark"_s, u"class"_s, u"sheets"_s, u"out"_s,
           u"format"_s},
          {u"force"_s},
          1,
          1,
          {u"map"_s, u"mark"_s, u"class"_s}},
         u"yunshan-cli tidy BOOK [--as exam|students] [--library LIB] [--map FIELD=COLUMN]…\n"
         "            [--mark TEXT=缺考|作弊|不变]… [--class TEXT=NUMBER]… [--sheets A,B]\n"
         "            --out FILE.xlsx [--force] [--format paths|json]\n"
         "    把学校里各种样子的工作簿整理成导入要求的样子，存为 FILE.xlsx，输出它的路径。\n"
         "    --as …             用来导入考试成绩（默认）或学生信息\n"
         "    --library LIB      按这个成绩库的科目和学生整理（默认只用 data/科目.txt 的科目）\n"
         "    --map FIELD=COLUMN 指定一列是什么，可以多次给出；FIELD 是班级、学号、姓名、考号、\n"
         "                       学籍号、科类、科目或不导入，COLUMN 是字母或表头；班级还可以是\n"
         "                       标题、表名或文件名\n"
         "    --mark …           成绩里的一种文字是什么意思，可以多次给出\n"
         "    --class …          一种班级的写法是哪个班，可以多次给出\n"
         "    --sheets A,B       只用这些数据表\n"
         "    --force            文件已存在时覆盖它\n"
         "    --format json      输出怎样整理的全部内容，这时可以不给 --out\n",
         runTidy},
        {u"score",
         {{}, {}, 2, 1000},
         u"yunshan-cli score LIB EXAM…\n"
         "    计算总分、标准分和名次。\n",
         runScore},
        {u"browse",
         {{u"exam"_s, u"classes"_s, u"categories"_s, u"show"_s, u"stream"_s, u"order"_s, u"sql"_s,
           u"format"_s},
          {u"accept-changes"_s},
          1,
          1},
         u"yunshan-cli browse LIB --exam A,B [--classes 1,2] [--categories 1]\n"
         "            [--show 原始分和名次|Z分|T分] [--stream 全|文|理]\n"
         "            [--order 总分:desc,班级:asc] [--sql TEXT] [--accept-changes]\n"
         "            [--format tsv|json]\n"
         "    浏览成绩。默认：全部班级，全部类别，科类“全”，原始分和名次。\n"
         "    --order …          最多四项，项目后面的 :asc 升序（默认），:desc 降序\n"
         "    --sql TEXT         代替生成的 SQL 语句\n"
         "    --accept-changes   语句会改动成绩库时也执行，执行前备份（默认不执行）\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runBrowse},
        {u"report",
         {{u"item"_s, u"button"_s, u"exam"_s, u"categories"_s, u"format"_s}, {u"each"_s}, 1, 1},
         u"yunshan-cli report LIB --item NAME --exam A,B [--each] [--categories 1,2]\n"
         "            [--format tsv|json]\n"
         "yunshan-cli report LIB --button NAME --exam A,B [--each] [--categories 1,2]\n"
         "            [--format tsv|json]\n"
         "    统计报表。\n"
         "    --item NAME        "
         "该名称的报表，各比率用自己的标题和设置；高、低分段也写作高分段、低分段\n"
         "    --button NAME      与界面上“执行统计”按钮完全相同的操作\n"
         "    --exam A,B         考试；只针对一次考试的报表遇到多次考试时按“取消”处理\n"
         "    --each             每次考试单独统计，各表依次排列，表前是考试名称\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runReport},
        {u"analyze",
         {{u"exam"_s, u"out"_s, u"format"_s}, {u"force"_s}, 1, 1},
         u"yunshan-cli analyze LIB --exam A --out DIR [--force] [--format paths|json]\n"
         "    综合分析：每个科类一个工作簿，存入文件夹 DIR，输出文件的路径。\n"
         "    --force            文件已存在时覆盖它\n"
         "    --format json      输出工作簿的全部内容，这时可以不给 --out\n",
         runAnalyze},
        {u"export",
         {{u"exam"_s, u"subjects"_s, u"classes"_s, u"class-average"_s, u"grade-average"_s,
           u"blank-rows"_s, u"columns"_s, u"out"_s, u"format"_s},
          {u"info-row"_s, u"chart"_s, u"grade-by-own-exam"_s, u"keep-together"_s, u"force"_s},
          1,
          1},
         u"yunshan-cli export LIB --exam A,B --subjects S1,S2 --classes 1,2 [--info-row]\n"
         "            [--class-average EXAM] [--grade-average EXAM] [--grade-by-own-exam]\n"
         "            [--blank-rows TEXT | --chart] [--keep-together] [--columns C1,C2,…]\n"
         "            [--out FILE] [--force] [--format paths|json]\n"
         "    导出成绩到工作簿：每名学生一块，每次考试一行，存为 FILE，输出文件的路径。\n"
         "    --info-row         学生信息单独一行\n"
         "    --class-average …  添加这次考试的班级平均分\n"
         "    --grade-average …  添加年级平均分；标注和数据仍取自班级平均分的考试\n"
         "    --grade-by-own-exam\n"
         "                       年级平均按所选考试标注和计算\n"
         "    --blank-rows TEXT  学生成绩间空行数（默认 2）\n"
         "    --chart            绘制总分排名折线图(一人一页)\n"
         "    --keep-together    不拆开学生的成绩块\n"
         "    --columns …        这次导出的列，代替成绩库里保存的；没有的列略去\n"
         "    --force            文件已存在时覆盖它\n"
         "    --format json      输出工作簿的全部内容，这时可以不给 --out\n",
         runExport},
        {u"student",
         {{u"id"_s, u"class"_s, u"number"_s, u"columns"_s, u"rank"_s, u"size"_s, u"picture"_s,
           u"out"_s, u"format"_s},
          {u"with-chart"_s, u"force"_s},
          1,
          1},
         u"yunshan-cli student LIB (--id N | --class C --number N) [--columns C1,C2]\n"
         "            [--rank 年名|班名] [--size WxH] [--picture FILE.png|.bmp|.pdf]\n"
         "            [--out BOOK.xlsx [--with-chart]] [--force] [--format tsv|json]\n"
         "    一名学生的历次成绩和名次分析图。\n"
         "    --id N             学生的 ID；也可以用 --class 和 --number 给出班级和学号\n"
         "    --columns …        图中的科目和总分（默认只有第一列；\"\" 为一列也不选）\n"
         "    --rank …           年级名次（默认）或班级名次\n"
         "    --size WxH         图的宽和高，单位为缇，1440 缇为 1 英寸（默认 9000x4000）\n"
         "    --picture FILE     把分析图存入图片或 PDF 文件\n"
         "    --out BOOK.xlsx    把成绩存入工作簿；加 --with-chart 时带分析图\n"
         "    --force            文件已存在时覆盖它\n"
         "    --format …         tsv 输出成绩表（默认），json 输出成绩表和图的全部内容\n",
         runStudent,
         {u"picture"_s, u"with-chart"_s}},
        {u"class-charts",
         {{u"class"_s, u"columns"_s, u"rank"_s, u"out"_s}, {u"force"_s}, 1, 1},
         u"yunshan-cli class-charts LIB --class C [--columns C1,C2] [--rank 年名|班名]\n"
         "            --out FILE.pdf|FOLDER [--force]\n"
         "    导出全班的分析图：一个 PDF 文件，每人一页；或一个文件夹，每人一张图片。\n"
         "    --columns …        图中的科目和总分（默认只有第一列；\"\" 为一列也不选）\n"
         "    --rank …           年级名次（默认）或班级名次\n"
         "    --force            文件已存在时覆盖它\n",
         runClassCharts,
         {u"out"_s}},
        {u"record",
         {{u"id"_s, u"class"_s, u"number"_s, u"set"_s, u"photo"_s, u"format"_s},
          {},
          1,
          1,
          {u"set"_s}},
         u"yunshan-cli record LIB (--id N | --class C --number N) [--set FIELD=VALUE]…\n"
         "            [--photo FILE] [--format tsv|json]\n"
         "    一名学生的信息；不给出 --set 和 --photo 时只输出。\n"
         "    --set FIELD=VALUE  修改一项，可以多次给出；值为空时不改\n"
         "    --photo FILE       照片，存入成绩库\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runRecord},
        {u"photos",
         {{u"format"_s}, {u"missing"_s, u"replace"_s, u"smaller"_s, u"no-backup"_s}, 1, 2},
         u"yunshan-cli photos LIB FOLDER [--replace] [--smaller] [--no-backup]\n"
         "yunshan-cli photos LIB --missing [--format tsv|json]\n"
         "    从文件夹设置全校学生的照片；或列出没有照片的学生。\n"
         "    FOLDER             其中每个班一个文件夹，以班号命名；照片名为学号或姓名，以 .jpg "
         "结尾\n"
         "    --replace          已经有照片的学生也换成新的（默认只补没有照片的）\n"
         "    --smaller          很大的照片改存高 600 像素的较小的图片（默认原样存入）\n"
         "    --no-backup        设置前不备份成绩库\n"
         "    --missing          列出没有照片的学生，什么也不改\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runPhotos},
        {u"correct",
         {{u"exam"_s, u"class"_s, u"number"_s, u"subject"_s, u"score"_s}, {u"rescore"_s}, 1, 1},
         u"yunshan-cli correct LIB --exam E --class C --number N --subject S --score TEXT\n"
         "            [--rescore]\n"
         "    修改一名学生在一次考试中的一科成绩，0 到满分。\n"
         "    --rescore          保存后重新计算这次考试的总分、标准分和名次\n",
         runCorrect},
        {u"delete-subjects",
         {{}, {u"yes"_s, u"no-backup"_s}, 2, 2},
         u"yunshan-cli delete-subjects LIB S1,S2 --yes [--no-backup]\n"
         "    删除科目和总分，连同名次和标准分。删除后不可恢复。\n"
         "    --yes              确实要删除，公式和设置里还写着它们也删除\n"
         "    --no-backup        删除前不备份成绩库\n",
         runDeleteSubjects},
        {u"delete-exams",
         {{}, {u"yes"_s, u"no-backup"_s}, 2, 2},
         u"yunshan-cli delete-exams LIB A,B --yes [--no-backup]\n"
         "    与菜单“删除考试”完全相同的操作：语句被数据库拒绝，考试保持不变。\n"
         "    --yes              对确认回答“确定”（默认“取消”）\n"
         "    --no-backup        不起作用：接受，但这条命令不写入成绩库\n",
         runDeleteExams},
        {u"remove-exams",
         {{u"exam"_s}, {u"yes"_s, u"no-backup"_s}, 1, 2, {u"exam"_s}},
         u"yunshan-cli remove-exams LIB [A,B] [--exam NAME]… --yes [--no-backup]\n"
         "    彻底删除考试：它们的成绩、考试名称表和教师名单里的行。先输出要删除的数目。\n"
         "    --exam NAME        一次考试，名称原样，可以含有逗号，可以多次给出\n"
         "    --yes              确实要删除；不给出时只输出数目，什么也不删除\n"
         "    --no-backup        删除前不备份成绩库\n",
         runRemoveExams},
        {u"move-student",
         {{u"id"_s, u"class"_s, u"number"_s, u"to-class"_s, u"to-number"_s, u"swap"_s, u"format"_s},
          {u"remove"_s, u"with-scores"_s, u"keep-stream"_s, u"rescore"_s, u"yes"_s, u"no-backup"_s},
          1,
          1},
         u"yunshan-cli move-student LIB (--id N | --class C --number N)\n"
         "            (--to-class C [--to-number N] | --swap C/N | --remove) [--with-scores]\n"
         "            [--keep-stream] [--yes] [--rescore] [--no-backup] [--format tsv|json]\n"
         "    调整一名学生，先输出要做的改动。\n"
         "    --to-class C       移到这个班\n"
         "    --to-number N      在班里的学号（默认排在最后一名后面）\n"
         "    --swap C/N         和 C 班 N 号的学生交换班级和学号\n"
         "    --remove           从学生名单里删除\n"
         "    --with-scores      以前的成绩一起改到新班级和学号，或一起删去（默认不改动）\n"
         "    --keep-stream      新班的科类或类别代码不同时也不改学生的（默认改为新班的）\n"
         "    --yes              确实要执行；不给出时只输出，什么也不改动\n"
         "    --rescore          执行后重新计算名次变了的考试\n"
         "    --no-backup        执行前不备份成绩库\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runMoveStudent},
        {u"settings",
         {{u"set"_s, u"analysis"_s, u"conditions"_s, u"condition"_s, u"delete-conditions"_s,
           u"format"_s},
          {},
          1,
          1,
          {u"set"_s, u"analysis"_s, u"condition"_s}},
         u"yunshan-cli settings LIB [--set NAME=VALUE]… [--analysis NAME=是|否]…\n"
         "            [--format tsv|json]\n"
         "yunshan-cli settings LIB --conditions NAME\n"
         "            [--condition STREAM:SUBJECT:>=85,<=100]… [--format tsv|json]\n"
         "yunshan-cli settings LIB --delete-conditions NAME\n"
         "    分析设置；不给出修改时只输出。\n"
         "    --set NAME=VALUE   修改一项设置，可以多次给出\n"
         "    --analysis …       是否加入综合分析，可以多次给出；第一项不能改\n"
         "    --conditions NAME  一项设置的各科条件；不给出 --condition 时只输出\n"
         "    --condition …      修改一科的两个条件并保存全部各科条件，可以多次给出\n"
         "    --delete-conditions NAME\n"
         "                       删除一项设置已经保存的各科条件，设置本身不变\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runSettings},
        {u"teachers",
         {{u"exam"_s, u"copy-from"_s, u"set"_s, u"format"_s}, {}, 1, 1, {u"set"_s}},
         u"yunshan-cli teachers LIB --exam E [--copy-from E2] [--set CLASS:COLUMN=NAMES]…\n"
         "            [--format tsv|json]\n"
         "    一次考试的教师名单；不给出 --copy-from 和 --set 时只输出。\n"
         "    --copy-from E2     载入另一次考试的名单，存为这次考试的\n"
         "    --set …            班级:科目=教师，例如 3:语文=张三,李四，可以多次给出\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出整张表格\n",
         runTeachers},
        {u"set-streams",
         {{u"science"_s}, {u"no-backup"_s}, 1, 1},
         u"yunshan-cli set-streams LIB --science 3,4,5 [--no-backup]\n"
         "    设置文理：给出的班在成绩表里的科类设为理，其余的班设为文。\n"
         "    --science …        设为理的班；\"\" 为一个班也没有\n"
         "    --no-backup        设置前不备份成绩库\n",
         runSetStreams},
        {u"backups",
         {{u"diff"_s, u"format"_s}, {}, 1, 1},
         u"yunshan-cli backups LIB [--diff COPY] [--format tsv|json]\n"
         "    列出成绩库旁边的备份，最新的在前。成绩库可以已经损坏或丢失。\n"
         "    --diff COPY        列出现在的成绩库和一份备份的不同之处；\n"
         "                       COPY 为列表中的序号，或备份的文件\n"
         "    --format …         tsv 以制表符分隔（默认），json 输出全部内容\n",
         runBackups},
        {u"restore",
         {{}, {}, 2, 2},
         u"yunshan-cli restore LIB COPY\n"
         "    把成绩库恢复为一份备份，先备份现在的成绩库，输出那一份的路径。\n"
         "    COPY               backups 列表中的序号，或备份的文件\n",
         runRestore},
        {u"info",
         {{}, {}, 1, 1},
         u"yunshan-cli info LIB\n"
         "    以 JSON 输出科类、班级和人数、考试、列、设置。\n",
         runInfo},
    };
    return all;
}

const Command* findCommand(const QString& name)
{
    for (const Command& command : commands()) {
        if (name == QStringView(command.name))
            return &command;
    }
    return nullptr;
}

} // namespace cli
