create table t_types (
    id int not null primary key,
    c_nvarchar nvarchar(50) null,
    c_varchar varchar(50) null,
    c_nchar nchar(5) null,
    c_char char(5) null,
    c_bit bit null,
    c_tinyint tinyint null,
    c_smallint smallint null,
    c_int int null,
    c_bigint bigint null,
    c_money money null,
    c_decimal decimal(19,6) null,
    c_real real null,
    c_float float null,
    c_date date null,
    c_datetime datetime null,
    c_guid uniqueidentifier null,
    c_nmax nvarchar(max) null,
    c_max varchar(max) null,
    c_bin varbinary(20) null,
    c_binmax varbinary(max) null)
GO
insert into t_types values (1, N'Żółć ęąś', 'Zażółć', N'abc', 'abc', 1, 200, -5, -2147483648, 9007199254740993,
    12.5, 12.500001, 3.14, 0.1, '2024-03-31', '2024-03-31T02:30:15.500', '6F9619FF-8B86-D011-B42D-00C04FC964FF',
    N'długi', 'długi', 0x0102FF, 0x00)
insert into t_types (id) values (2)
GO
create table t_rows (id int not null primary key, name nvarchar(40) null, weight decimal(19,6) null)
GO
insert into t_rows values (1, N'Cukier', 2.5)
insert into t_rows values (2, null, null)
insert into t_rows values (3, N'mąka', 10)
GO
create procedure t_answer @Return int, @Text nvarchar(200), @Message nvarchar(200) output as
begin
    set nocount on
    set @Message = @Text
    return @Return
end
GO
create procedure t_no_message @Return int, @Message nvarchar(200) output as
begin
    set nocount on
    set @Message = null
    return @Return
end
GO
create procedure t_words @A nvarchar(50), @B nvarchar(50), @C nvarchar(50) = N'brak', @Message nvarchar(200) output as
begin
    set nocount on
    set @Message = isnull(@A, N'-') + N'|' + isnull(@B, N'-') + N'|' + isnull(@C, N'-')
    return 0
end
GO
create procedure t_numbers @Small smallint, @Whole int, @Exact decimal(19,6), @Float float, @Flag bit,
    @Message nvarchar(200) output as
begin
    set nocount on
    set @Message = isnull(cast(@Small as nvarchar(20)), N'-') + N'|' + isnull(cast(@Whole as nvarchar(20)), N'-')
        + N'|' + isnull(cast(@Exact as nvarchar(40)), N'-') + N'|' + isnull(cast(@Float as nvarchar(40)), N'-')
        + N'|' + isnull(cast(@Flag as nvarchar(5)), N'-')
    return 0
end
GO
create procedure t_long @Text nvarchar(max), @Length int output, @Message nvarchar(200) output as
begin
    set nocount on
    set @Length = len(@Text)
    set @Message = substring(@Text, 1, 3)
    return 0
end
GO
create procedure t_select @Message nvarchar(200) output as
begin
    set nocount on
    select id, name from t_rows order by id
    select count(*) from t_rows
    set @Message = N'po wierszach'
    return 3
end
GO
create procedure t_refuse @Message nvarchar(200) output as
begin
    set nocount on
    select id from t_rows
    raiserror(N'Serwer odmawia
##Lokalizacja zajęta', 16, 1)
    set @Message = N'x'
    return 1
end
GO
create procedure t_nothing as
begin
    set nocount on
    declare @n int
    set @n = 1
end
GO
create procedure t_change as
begin
    update t_rows set name = N'zmiana' where id = 2
    return 0
end
GO
create procedure t_talk as
begin
    print N'uwaga'
    select id from t_rows order by id
end
GO
