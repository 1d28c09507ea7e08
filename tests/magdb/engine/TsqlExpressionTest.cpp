#include "magdb/engine/TsqlRunner.h"

#include <gtest/gtest.h>

#include <ostream>

// Values and types that SQL Server's own documentation, or its known behaviour, gives for expressions.

namespace {

struct Example {
    const char* expression;
    const char* result;
};

std::ostream& operator<<(std::ostream& out, const Example& example) {
    return out << example.expression;
}

class Examples : public testing::TestWithParam<Example> {
protected:
    /// One database serves all examples: they only read.
    static TsqlRunner& runner() {
        static TsqlRunner shared;
        return shared;
    }
};

class Expression : public Examples {};
TEST_P(Expression, HasTypeAndValue) {
    EXPECT_EQ(runner().run(std::string("SELECT ") + GetParam().expression), GetParam().result);
}

/// Where the declared type of the result says nothing.
class Result : public Examples {};
TEST_P(Result, HasValue) {
    EXPECT_EQ(runner().values(std::string("SELECT ") + GetParam().expression), GetParam().result);
}

/// Conditions, as 1 or 0.
class Condition : public Examples {};
TEST_P(Condition, Holds) {
    EXPECT_EQ(
        runner().values(std::string("SELECT CASE WHEN ") + GetParam().expression + " THEN 1 ELSE 0 END"),
        GetParam().result);
}

class Failure : public Examples {};
TEST_P(Failure, HasNumberAndText) {
    EXPECT_EQ(runner().messages(std::string("SELECT ") + GetParam().expression), GetParam().result);
}

using testing::Values;

INSTANTIATE_TEST_SUITE_P(
    Integers, Expression,
    Values(Example{"5 / 2", "int 2"}, Example{"-5 / 2", "int -2"}, Example{"5 % 3", "int 2"},
           Example{"-5 % 3", "int -2"}, Example{"2147483647", "int 2147483647"},
           Example{"2147483648", "decimal(10,0) 2147483648"}, Example{"7 & 3", "int 3"},
           Example{"5 | 2", "int 7"}, Example{"5 ^ 1", "int 4"}, Example{"~5", "int -6"},
           Example{"~CAST(1 AS bit)", "bit 0"}, Example{"CAST(1 AS bigint) + 1", "bigint 2"},
           Example{"CAST(1 AS tinyint) + CAST(2 AS smallint)", "smallint 3"},
           Example{"CAST(5 AS bit)", "bit 1"}, Example{"CAST(2.9 AS int)", "int 2"},
           Example{"CAST(-2.9 AS int)", "int -2"}, Example{"CAST(2.7e0 AS int)", "int 2"},
           Example{"CAST('' AS int)", "int 0"}, Example{"CAST(' 42 ' AS int)", "int 42"},
           Example{"'1' + 1", "int 2"}, Example{"1 + NULL", "int NULL"}));

INSTANTIATE_TEST_SUITE_P(
    Decimals, Expression,
    Values(Example{"1.50", "decimal(3,2) 1.50"},
           Example{"CONVERT(varchar(20), 1.0 / 3)", "varchar(20) '0.333333'"},
           Example{"CONVERT(varchar(20), 5 / 2.0)", "varchar(20) '2.500000'"},
           Example{"CAST(1 AS decimal(10,2)) / CAST(3 AS decimal(10,2))", "decimal(23,13) 0.3333333333333"},
           Example{"CAST(1.5 AS decimal(10,2)) * CAST(2 AS decimal(10,2))", "decimal(21,4) 3.0000"},
           Example{"CAST(1.5 AS decimal(10,2)) + CAST(2 AS decimal(12,4))", "decimal(13,4) 3.5000"},
           Example{"CAST(2 AS decimal(38,10)) * CAST(3 AS decimal(38,10))", "decimal(38,6) 6.000000"},
           Example{"CONVERT(varchar(20), CAST(1.5 AS decimal(10,2)) + 1)", "varchar(20) '2.50'"},
           Example{"CONVERT(varchar(20), CAST(1.5 AS decimal(5,2)) % 1)", "varchar(20) '0.50'"},
           Example{"CAST(2.5 AS decimal(5,0))", "decimal(5,0) 3"},
           Example{"CAST(-2.5 AS decimal(5,0))", "decimal(5,0) -3"},
           Example{"CAST(0.125 AS decimal(5,2))", "decimal(5,2) 0.13"},
           Example{"CAST('12.345' AS decimal(6,2))", "decimal(6,2) 12.35"},
           Example{"CAST(1 AS decimal)", "decimal(18,0) 1"}, Example{"-1.5", "decimal(2,1) -1.5"},
           Example{"1.5 + 1e0", "float 2.5"}, Example{"CAST(1.25 AS real)", "real 1.25"}));

INSTANTIATE_TEST_SUITE_P(
    Money, Expression,
    Values(Example{"$1234.5", "money 1234.5000"}, Example{"CAST(10 AS money) / 3", "money 3.3333"},
           Example{"CAST('1,234.56' AS money)", "money 1234.5600"}, Example{"$2 * $3", "money 6.0000"},
           Example{"CONVERT(varchar(20), CAST(1234567.891 AS money))", "varchar(20) '1234567.89'"},
           Example{"CONVERT(varchar(20), CAST(1234567.891 AS money), 1)", "varchar(20) '1,234,567.89'"},
           Example{"CONVERT(varchar(20), CAST(1234567.891 AS money), 2)", "varchar(20) '1234567.8910'"}));

INSTANTIATE_TEST_SUITE_P(
    Rounding, Expression,
    Values(Example{"ROUND(2.5, 0)", "decimal(2,1) 3.0"}, Example{"ROUND(-2.5, 0)", "decimal(2,1) -3.0"},
           Example{"ROUND(123.9994, 3)", "decimal(7,4) 123.9990"},
           Example{"ROUND(123.9995, 3)", "decimal(7,4) 124.0000"},
           Example{"ROUND(123.4545, 2)", "decimal(7,4) 123.4500"},
           Example{"ROUND(123.45, -2)", "decimal(5,2) 100.00"},
           Example{"ROUND(150.75, 0)", "decimal(5,2) 151.00"},
           Example{"ROUND(150.75, 0, 1)", "decimal(5,2) 150.00"},
           Example{"ROUND(748.58, -1)", "decimal(5,2) 750.00"}, Example{"ROUND(14, -1)", "int 10"},
           Example{"CONVERT(varchar(9), FLOOR(-1.5))", "varchar(9) '-2'"},
           Example{"CONVERT(varchar(9), CEILING(-1.5))", "varchar(9) '-1'"}, Example{"FLOOR(7)", "int 7"},
           Example{"ABS(-3)", "int 3"}, Example{"CONVERT(varchar(9), ABS(-1.5))", "varchar(9) '1.5'"},
           Example{"SIGN(-7)", "int -1"}, Example{"POWER(2, 10)", "int 1024"},
           Example{"POWER(2.0, 0.5)", "decimal(38,1) 1.4"}, Example{"SQRT(16)", "float 4"},
           Example{"SQUARE(3)", "float 9"},
           // A sign binds less than the operators of multiplication.
           Example{"CONVERT(decimal(5,1), -100.0 / -100.0 * 10.0)", "decimal(5,1) 0.1"}));

INSTANTIATE_TEST_SUITE_P(
    Nulls, Expression,
    Values(Example{"NULL", "int NULL"}, Example{"ISNULL(NULL, 1)", "int 1"},
           // ISNULL takes the type of its first argument, COALESCE that of the strongest.
           Example{"ISNULL(CAST(NULL AS varchar(2)), 'abc')", "varchar(2) 'ab'"},
           Example{"COALESCE(CAST(NULL AS varchar(2)), 'abc')", "varchar(3) 'abc'"},
           Example{"ISNULL(CAST(NULL AS int), 2.7)", "int 2"},
           Example{"CONVERT(varchar(9), COALESCE(NULL, 1, 2.5))", "varchar(9) '1.0'"},
           Example{"NULLIF(1, 1)", "int NULL"}, Example{"NULLIF('a', 'b')", "varchar(1) 'a'"},
           Example{"CAST(CONCAT('a', NULL, 1) + 'b' AS varchar(5))", "varchar(5) 'a1b'"}));

INSTANTIATE_TEST_SUITE_P(Choices, Expression,
                         Values(Example{"CONVERT(varchar(9), CASE WHEN 1 = 1 THEN 1 ELSE 2.5 END)",
                                        "varchar(9) '1.0'"},
                                Example{"CASE WHEN 1 = 0 THEN 'a' ELSE 1 END", "int 1"},
                                Example{"CASE 2 WHEN 1 THEN 'a' WHEN 2 THEN 'bc' END", "varchar(2) 'bc'"},
                                Example{"CASE WHEN 1 = 0 THEN 1 END", "int NULL"},
                                Example{"CASE 'A' WHEN 'a' THEN N'x' ELSE 'yy' END", "nvarchar(2) 'x'"},
                                Example{"CASE WHEN 1 = 1 THEN 0 ELSE 1 / 0 END", "int 0"},
                                Example{"IIF(1 > 2, 'a', 'bb')", "varchar(2) 'bb'"},
                                Example{"CHOOSE(2, 'a', 'b')", "varchar(1) 'b'"},
                                Example{"CHOOSE(3, 'a', 'b')", "varchar(1) NULL"}));

INSTANTIATE_TEST_SUITE_P(
    Texts, Result,
    Values(Example{"'abc'", "'abc'"}, Example{"N'zażółć'", "'zażółć'"}, Example{"''", "''"},
           Example{"'a' + N'b'", "'ab'"}, Example{"LEN('abc  ')", "3"}, Example{"LEN('  a')", "3"},
           Example{"LEN(N'zażółć')", "6"}, Example{"DATALENGTH(N'abc ')", "8"},
           Example{"DATALENGTH('zażółć')", "6"}, Example{"DATALENGTH(5)", "4"},
           Example{"SUBSTRING('abcdef', 2, 3)", "'bcd'"}, Example{"SUBSTRING('abc', 0, 2)", "'a'"},
           Example{"SUBSTRING('abc', -1, 3)", "'a'"}, Example{"SUBSTRING('abc', 5, 1)", "''"},
           Example{"LEFT('abc', 2)", "'ab'"}, Example{"RIGHT('abc', 5)", "'abc'"},
           Example{"CHARINDEX('B', 'abc')", "2"}, Example{"CHARINDEX('x', 'abc')", "0"},
           Example{"CHARINDEX('a', 'abca', 2)", "4"}, Example{"PATINDEX('%[0-9]%', 'ab1')", "3"},
           Example{"REPLACE('aAb', 'a', 'x')", "'xxb'"},
           Example{"STUFF('abcdef', 2, 3, 'ijklmn')", "'aijklmnef'"}, Example{"REVERSE('abc')", "'cba'"},
           Example{"REPLICATE('ab', 3)", "'ababab'"}, Example{"'[' + SPACE(3) + ']'", "'[   ]'"},
           Example{"UPPER(N'żółw')", "'ŻÓŁW'"}, Example{"LOWER('ABC')", "'abc'"},
           Example{"LTRIM('  a ') + '|'", "'a |'"}, Example{"RTRIM('  a ') + '|'", "'  a|'"},
           Example{"TRIM('  a ')", "'a'"}, Example{"ASCII('A')", "65"}, Example{"CHAR(65)", "'A'"},
           Example{"CHAR(300)", "NULL"}, Example{"NCHAR(380)", "'ż'"}, Example{"UNICODE(N'ż')", "380"},
           Example{"QUOTENAME('a]b')", "'[a]]b]'"}, Example{"STR(123.45, 6, 1)", "' 123.5'"},
           Example{"STR(123.45, 2, 2)", "'**'"}, Example{"STR(5)", "'         5'"}));

INSTANTIATE_TEST_SUITE_P(Conversions, Expression,
                         Values(Example{"CAST('abcdef' AS varchar(3))", "varchar(3) 'abc'"},
                                Example{"CAST('x' AS char(3))", "char(3) 'x  '"},
                                Example{"CAST(123 AS varchar(2))", "varchar(2) '*'"},
                                Example{"CAST(123 AS varchar)", "varchar(30) '123'"},
                                Example{"CAST(1.50 AS varchar(9))", "varchar(9) '1.50'"},
                                Example{"CAST(CAST(1 AS bit) AS varchar(5))", "varchar(5) '1'"},
                                Example{"CAST('true' AS bit)", "bit 1"},
                                Example{"CAST(1.5e0 AS varchar(30))", "varchar(30) '1.5'"},
                                Example{"CAST(1234567.0e0 AS varchar(30))", "varchar(30) '1.23457e+006'"},
                                Example{"CAST(0.1e0 AS nvarchar(30))", "nvarchar(30) '0.1'"},
                                Example{"CAST('1e3' AS float)", "float 1000"},
                                Example{"CAST(N'ż' AS varchar(5))", "varchar(5) 'ż'"},
                                Example{"CAST(N'€' AS varchar(5))", "varchar(5) '€'"},
                                Example{"CAST(N'日' AS varchar(5))", "varchar(5) '?'"},
                                Example{"CAST('ab' AS varbinary(5))", "varbinary(5) 0x6162"},
                                Example{"CAST(0x6162 AS varchar(5))", "varchar(5) 'ab'"},
                                Example{"TRY_CAST('x' AS int)", "int NULL"},
                                Example{"TRY_CONVERT(int, '5')", "int 5"},
                                Example{"0xAF", "varbinary(1) 0xAF"},
                                Example{"CONVERT(varchar(10), 0xAF12, 2)", "varchar(10) 'AF12'"},
                                Example{"CONVERT(varchar(10), 0xAF12, 1)", "varchar(10) '0xAF12'"},
                                Example{"ISNUMERIC('12.5')", "int 1"}, Example{"ISNUMERIC('x')", "int 0"}));

INSTANTIATE_TEST_SUITE_P(
    Floats, Result,
    Values(Example{"CAST(123456789.123e0 AS varchar(30))", "'1.23457e+008'"},
           Example{"CAST(1e15 AS varchar(30))", "'1e+015'"},
           Example{"CAST(0.00001e0 AS varchar(30))", "'1e-005'"},
           Example{"CAST(100000e0 AS varchar(30))", "'100000'"},
           Example{"CONVERT(varchar(30), 1.0e0 / 3, 1)", "'3.3333333e-001'"},
           Example{"CONVERT(varchar(30), 1.0e0 / 3, 2)", "'3.333333333333333e-001'"},
           Example{"CAST(1.0e0 / 3 AS decimal(10,4))", "0.3333"}, Example{"ROUND(2.345e0, 2)", "2.35"},
           Example{"LEN(12345)", "5"}, Example{"LEN(1.50)", "4"},
           Example{"STUFF('abc', 2, 0, 'XX')", "'aXXbc'"}, Example{"STUFF('abc', 0, 1, 'x')", "NULL"},
           Example{"DATEADD(day, 1.9, CAST('20240101' AS datetime))", "2024-01-02 00:00:00.000"},
           Example{"CAST('12:30' AS datetime)", "1900-01-01 12:30:00.000"},
           Example{"CASE WHEN 'a' LIKE NULL THEN 1 WHEN NOT 'a' LIKE NULL THEN 2 ELSE 3 END", "3"}));

INSTANTIATE_TEST_SUITE_P(
    DateStyles, Expression,
    Values(Example{"CONVERT(varchar(30), CAST('2024-02-09 13:14:15.678' AS datetime))",
                   "varchar(30) 'Feb  9 2024  1:14PM'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 4)",
                   "varchar(30) '29.02.24'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 101)",
                   "varchar(30) '02/29/2024'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 103)",
                   "varchar(30) '29/02/2024'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 104)",
                   "varchar(30) '29.02.2024'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 105)",
                   "varchar(30) '29-02-2024'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 108)",
                   "varchar(30) '13:14:15'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 112)",
                   "varchar(30) '20240229'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 113)",
                   "varchar(30) '29 Feb 2024 13:14:15:677'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 114)",
                   "varchar(30) '13:14:15:677'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 120)",
                   "varchar(30) '2024-02-29 13:14:15'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 121)",
                   "varchar(30) '2024-02-29 13:14:15.677'"},
           Example{"CONVERT(varchar(30), CAST('2024-02-29T13:14:15.678' AS datetime), 126)",
                   "varchar(30) '2024-02-29T13:14:15.677'"},
           Example{"CONVERT(varchar(10), CAST('2024-02-29T13:14:15' AS datetime), 120)",
                   "varchar(10) '2024-02-29'"},
           Example{"CONVERT(datetime, '29.02.2024', 104)", "datetime 2024-02-29 00:00:00.000"},
           Example{"CONVERT(date, '29/02/2024', 103)", "date 2024-02-29 00:00:00.000"}));

INSTANTIATE_TEST_SUITE_P(
    Dates, Expression,
    Values(Example{"CAST('20240131' AS datetime)", "datetime 2024-01-31 00:00:00.000"},
           Example{"CAST('2024-01-01T23:59:59.999' AS datetime)", "datetime 2024-01-02 00:00:00.000"},
           Example{"CAST('2024-01-01T00:00:00.995' AS datetime)", "datetime 2024-01-01 00:00:00.997"},
           Example{"CAST(0 AS datetime)", "datetime 1900-01-01 00:00:00.000"},
           Example{"CAST('19000102 18:00' AS datetime) + 1", "datetime 1900-01-03 18:00:00.000"},
           Example{"CAST(CAST('19000102 12:00' AS datetime) AS float)", "float 1.5"},
           Example{"CAST(CAST('20240131 13:00' AS datetime) AS date)", "date 2024-01-31 00:00:00.000"},
           Example{"DATEADD(month, 1, CAST('20240131' AS datetime))", "datetime 2024-02-29 00:00:00.000"},
           Example{"DATEADD(yy, 1, CAST('20240229' AS date))", "date 2025-02-28 00:00:00.000"},
           Example{"DATEADD(mi, -1, CAST('20240101' AS datetime))", "datetime 2023-12-31 23:59:00.000"},
           Example{"DATEDIFF(day, '20240101', '20240301')", "int 60"},
           Example{"DATEDIFF(year, '20231231', '20240101')", "int 1"},
           Example{"DATEDIFF(month, '20240131', '20240201')", "int 1"},
           Example{"DATEDIFF(hour, '20240101 00:59', '20240101 01:00')", "int 1"},
           Example{"DATEDIFF(week, '20240106', '20240107')", "int 1"},
           Example{"DATEPART(weekday, '20240610')", "int 2"},
           Example{"DATEPART(iso_week, '20210103')", "int 53"},
           Example{"DATEPART(dayofyear, '20241231')", "int 366"},
           Example{"DATEPART(quarter, '20240610')", "int 2"},
           Example{"DATEPART(millisecond, CAST('20240101 00:00:00.678' AS datetime))", "int 677"},
           Example{"DATENAME(month, '20240610')", "nvarchar(30) 'June'"},
           Example{"DATENAME(weekday, '20240610')", "nvarchar(30) 'Monday'"},
           Example{"YEAR('20240610') * 10000 + MONTH('20240610') * 100 + DAY('20240610')", "int 20240610"},
           Example{"EOMONTH('20240210')", "date 2024-02-29 00:00:00.000"},
           Example{"EOMONTH('20240110', 1)", "date 2024-02-29 00:00:00.000"},
           Example{"ISDATE('20241301')", "int 0"}, Example{"ISDATE('20241201')", "int 1"}));

INSTANTIATE_TEST_SUITE_P(
    Comparisons, Condition,
    Values(Example{"'abc' = 'abc   '", "1"}, Example{"'a' = 'A'", "1"}, Example{"N'ż' = N'Ż'", "1"},
           Example{"'a' = N'ą'", "0"}, Example{"'a' = 'A' COLLATE Polish_CS_AS", "0"},
           Example{"N'ł' > N'l' AND N'ł' < N'm'", "1"}, Example{"1 = '01'", "1"}, Example{"1 = 1.0", "1"},
           Example{"NULL = NULL", "0"}, Example{"NULL IS NULL", "1"}, Example{"'a' + NULL IS NULL", "1"},
           Example{"NOT (1 = NULL)", "0"}, Example{"1 NOT IN (2, NULL)", "0"}, Example{"1 IN (1, NULL)", "1"},
           Example{"5 BETWEEN 5 AND 6", "1"}, Example{"5 NOT BETWEEN 6 AND 4", "1"}, Example{"'' = ' '", "1"},
           Example{"CAST('20240101' AS datetime) = '2024-01-01T00:00:00'", "1"}, Example{"0x01 < 0x02", "1"},
           Example{"2 > ALL (SELECT 1 UNION SELECT 0)", "1"},
           Example{"2 = ANY (SELECT 1 UNION SELECT 2)", "1"},
           Example{"NOT EXISTS (SELECT 1 WHERE 1 = 0)", "1"}, Example{"$5 > 4.99", "1"},
           Example{"'10' < '9'", "1"}));

INSTANTIATE_TEST_SUITE_P(
    Patterns, Condition,
    Values(
        Example{"'abc' LIKE 'ABC'", "1"}, Example{"'abc' LIKE 'a%'", "1"}, Example{"'abc' LIKE '_b_'", "1"},
        Example{"'abc' LIKE '[a-c]bc'", "1"}, Example{"'abc' LIKE '[^a-c]bc'", "0"},
        Example{"'5%' LIKE '5[%]'", "1"}, Example{"'5x' LIKE '5[%]'", "0"},
        Example{"'5%' LIKE '5!%' ESCAPE '!'", "1"}, Example{"'a_b' LIKE 'a[_]b'", "1"},
        Example{"'[x' LIKE '[[]x'", "1"}, Example{"'a-b' LIKE 'a[-]b'", "1"},
        Example{"'abc' NOT LIKE '%d%'", "1"},
        // Trailing blanks: a varchar may have more than its pattern, not less; nvarchar must match exactly.
        Example{"'abc ' LIKE 'abc'", "1"}, Example{"'abc' LIKE 'abc '", "0"},
        Example{"N'abc ' LIKE N'abc'", "0"}, Example{"N'Żółw' LIKE N'ż%'", "1"},
        Example{"NULL LIKE '%'", "0"}, Example{"'' LIKE '%'", "1"}, Example{"'b' LIKE '[abc]'", "1"},
        Example{"']' LIKE ']'", "1"}, Example{"'ab' LIKE '%b%'", "1"}));

INSTANTIATE_TEST_SUITE_P(
    Errors, Failure,
    Values(
        Example{"1 / 0", "8134 Divide by zero error encountered."},
        Example{"1.0 / 0", "8134 Divide by zero error encountered."},
        Example{"1e0 / 0", "8134 Divide by zero error encountered."},
        Example{"5 % 0", "8134 Divide by zero error encountered."},
        Example{"2147483647 + 1", "8115 Arithmetic overflow error converting expression to data type int."},
        Example{"CAST(255 AS tinyint) + CAST(1 AS tinyint)",
                "8115 Arithmetic overflow error converting expression to data type tinyint."},
        Example{"CAST(300 AS tinyint)", "220 Arithmetic overflow error for data type tinyint, value = 300."},
        Example{"CAST(40000 AS smallint)",
                "220 Arithmetic overflow error for data type smallint, value = 40000."},
        Example{"CAST('40000' AS smallint)",
                "244 The conversion of the varchar value '40000' overflowed an INT2 column. Use a larger "
                "integer column."},
        Example{"CAST('99999999999' AS int)",
                "248 The conversion of the varchar value '99999999999' overflowed an int column."},
        Example{"CAST('abc' AS int)",
                "245 Conversion failed when converting the varchar value 'abc' to data type int."},
        Example{"1 + N'x'", "245 Conversion failed when converting the nvarchar value 'x' to data type int."},
        Example{"1 + '2.5'",
                "245 Conversion failed when converting the varchar value '2.5' to data type int."},
        Example{"CASE WHEN 1 = 1 THEN 'a' ELSE 1 END",
                "245 Conversion failed when converting the varchar value 'a' to data type int."},
        Example{"CAST(12345.678 AS decimal(5,2))",
                "8115 Arithmetic overflow error converting numeric to data type numeric."},
        Example{"CAST('x' AS decimal(5,2))", "8114 Error converting data type varchar to numeric."},
        Example{"CAST('x' AS float)", "8114 Error converting data type varchar to float."},
        Example{"CAST(123 AS nvarchar(2))",
                "8115 Arithmetic overflow error converting expression to data type nvarchar."},
        Example{"CAST(12.5 AS varchar(2))",
                "8115 Arithmetic overflow error converting numeric to data type varchar."},
        Example{"CAST('20240230' AS datetime)",
                "242 The conversion of a varchar data type to a datetime data type resulted in an "
                "out-of-range value."},
        Example{"CAST('abc' AS datetime)",
                "241 Conversion failed when converting date and/or time from character string."},
        Example{"ROUND(748.58, -3)",
                "8115 Arithmetic overflow error converting expression to data type numeric."},
        Example{"SUBSTRING('abc', 1, -1)",
                "537 Invalid length parameter passed to the LEFT or SUBSTRING function."},
        Example{"ABS(CAST(-2147483648 AS int))",
                "8115 Arithmetic overflow error converting expression to data type int."},
        Example{"CAST(9223372036854775807 AS bigint) + 1",
                "8115 Arithmetic overflow error converting expression to data type bigint."},
        Example{"NoSuchColumn", "207 Invalid column name 'NoSuchColumn'."},
        Example{"a.b", "4104 The multi-part identifier \"a.b\" could not be bound."},
        Example{"nofunction(1)", "195 'nofunction' is not a recognized built-in function name."},
        Example{"@x", "137 Must declare the scalar variable \"@x\"."},
        Example{"1 FROM nowhere", "208 Invalid object name 'nowhere'."},
        Example{"CAST(1 AS foo)", "243 Type foo is not a defined system type."}));

}  // namespace
