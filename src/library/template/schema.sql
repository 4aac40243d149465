-- The tables of an empty score library, in the order in which they are documented.
-- Declared types are ours; each ends in the word that gives SQLite the right affinity.
-- Texts compare without regard to case. No check or not-null constraints: a value that does not fit is
-- refused when it is assigned to a field, and the rest of the row is still written.

-- An import adds to indexes all over the file: with pages of 8 KB it writes half as many of them.
pragma page_size = 8192;

create table [信息表] (
    [ID]         INTEGER PRIMARY KEY AUTOINCREMENT,
    [班级]       Double REAL,
    [学号]       Double REAL,
    [姓名]       text(50) COLLATE NOCASE,
    [科类]       text(50) COLLATE NOCASE,
    [类别代码]   Double REAL DEFAULT 1,
    [类别]       text(50) COLLATE NOCASE,
    [性别]       text(50) COLLATE NOCASE,
    [出生时间]   text(50) COLLATE NOCASE,
    [入学时间]   text(50) COLLATE NOCASE,
    [学籍号]     text(50) COLLATE NOCASE,
    [原毕业学校] text(100) COLLATE NOCASE,
    [身份证]     text(50) COLLATE NOCASE,
    [民族]       text(50) COLLATE NOCASE,
    [籍贯]       text(100) COLLATE NOCASE,
    [备注]       Memo TEXT COLLATE NOCASE,
    [照片名]     text(50) COLLATE NOCASE,
    [照片]       LongBinary BLOB
);

-- One row per student and exam; id is the student's ID and no key. Screens offer the columns from
-- the fourth on. The columns of the subjects and 备注 are added when a library is created.
create table [成绩表] (
    [id]       Long INTEGER,
    [考试编号] Integer INTEGER,
    [类别代码] Double REAL,
    [班级]     Double REAL,
    [学号]     Double REAL,
    [姓名]     text(50) COLLATE NOCASE,
    [科类]     text(50) COLLATE NOCASE,
    [考试名称] text(50) COLLATE NOCASE
);

-- One row per exam and stream; the columns of the subjects follow behind the first five.
create table [考试名称表] (
    [ID]       INTEGER PRIMARY KEY AUTOINCREMENT,
    [考试名称] text(50) COLLATE NOCASE,
    [科类]     text(50) COLLATE NOCASE,
    [考试编号] Integer INTEGER,
    [备注]     Memo TEXT COLLATE NOCASE
);

create table [教师表] (
    [考试名称] text(50) COLLATE NOCASE,
    [班级]     Double REAL
);

create table [分班表] (
    [班级]   Double REAL,
    [学号]   Double REAL,
    [姓名]   text(50) COLLATE NOCASE,
    [新班级] Double REAL,
    [新学号] Double REAL,
    [已分班] Long INTEGER DEFAULT 0, -- 0, then the ID of the student who was moved
    [ID]     INTEGER PRIMARY KEY AUTOINCREMENT
);

create table [总分公式] (
    [总分] text(50) COLLATE NOCASE PRIMARY KEY,
    [公式] text(255) COLLATE NOCASE
);

-- One row per setting. 名称 ignores blanks at its end: the workbench knows one statistic by its name
-- with a blank behind it, the reports by the name without.
create table [设置表] (
    [ID]           Long INTEGER,
    [名称]         text(50) COLLATE RTRIM,
    [设置]         Memo TEXT COLLATE NOCASE,
    [加入综合分析] text(50) COLLATE NOCASE,
    [各科条件]     text(50) COLLATE NOCASE,
    [选项]         text(255) COLLATE NOCASE,
    [自定义]       Long INTEGER
);

create table [详细设置表] (
    [设置名称] text(50) COLLATE NOCASE,
    [科类]     text(50) COLLATE NOCASE,
    [科目]     text(50) COLLATE NOCASE,
    [条件1]    text(50) COLLATE NOCASE,
    [分数1]    text(50) COLLATE NOCASE,
    [条件2]    text(50) COLLATE NOCASE,
    [分数2]    text(50) COLLATE NOCASE
);

create table [自定义显示表] (
    [项目名称] text(50) COLLATE NOCASE PRIMARY KEY,
    [显示项目] Memo TEXT COLLATE NOCASE
);

create table [颜色表] (
    [ID]   Long INTEGER,
    [颜色] Long INTEGER
);

create table [特值表] (
    [txt] text(50) COLLATE NOCASE,
    [z]   Double REAL
);
