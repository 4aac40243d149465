-- Teachers of one exam of the demonstration library. The screen for teachers' lists does not exist
-- yet, so ./run puts them in with the sqlite3 program.
insert into 教师表(考试名称, 班级, 语文, 数学, 英语, 物理, 化学, 生物, 政治, 历史, 地理) values
    ('高一期中', 1, '林晓岚', '周立群', '何婉清', null, null, null, '许国平', '叶秋白', '沈望山'),
    ('高一期中', 2, '林晓岚', '郑思源', '何婉清', null, null, null, '许国平', '叶秋白', '沈望山'),
    ('高一期中', 3, '陆知行', '郑思源', '苏明远', '高远志', '马春生', '唐小苗', null, null, null),
    ('高一期中', 4, '陆知行', '吴启航', '苏明远', '高远志', '马春生', '唐小苗', null, null, null),
    ('高一期中', 5, '谢雨桐', '吴启航', '程可欣', '韩松涛', '邓家宝', '唐小苗', null, null, null),
    ('高一期中', 6, '谢雨桐', '周立群', '程可欣', '韩松涛', '邓家宝', '罗一鸣', null, null, null);
