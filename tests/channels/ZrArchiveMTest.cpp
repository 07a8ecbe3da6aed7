#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <type_traits>
#include <typeinfo>

#include "channels/ChannelErrorCodes.h"
#include "channels/FltMatrixText.h"
#include "channels/ZrArchiveM.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

struct MatrixCase {
  const char* name;
  const char* text;
  ErrorCode code;
  std::size_t rows, columns;
  std::vector<double> columnwise;
};

class MatrixTextTest : public ::testing::TestWithParam<MatrixCase> {};

TEST_P(MatrixTextTest, Reads) {
  const MatrixCase& c = GetParam();
  FltMatrix m(9, 9);
  ASSERT_EQ(ReadFltMatrixText(c.text, m), c.code);
  if (c.code != 0) return;
  EXPECT_EQ(m.Rows(), c.rows);
  EXPECT_EQ(m.Columns(), c.columns);
  EXPECT_EQ(std::vector<double>(m.Data(), m.Data() + m.Size()), c.columnwise);
}

INSTANTIATE_TEST_SUITE_P(
    Notation, MatrixTextTest,
    ::testing::Values(MatrixCase{"Empty", "[]", 0, 0, 0, {}}, MatrixCase{"Colour", "[1, 0, 0]", 0, 1, 3, {1, 0, 0}},
                      MatrixCase{"LineBreakJoins", "[1 2 3\n4 5 6]", 0, 1, 6, {1, 2, 3, 4, 5, 6}},
                      MatrixCase{"RowsRowByRow", "[1 2; 3 4]", 0, 2, 2, {1, 3, 2, 4}},
                      MatrixCase{"Transposed", "[1 2; 3 4]'", 0, 2, 2, {1, 2, 3, 4}},
                      MatrixCase{"TwoQuotesCancel", "[1 2 3]''", 0, 1, 3, {1, 2, 3}},
                      MatrixCase{"ThreeQuotesTranspose", "[1 2 3]'''", 0, 3, 1, {1, 2, 3}},
                      MatrixCase{"NonNumberIsZero", "[1 x 2.5e1]", 0, 1, 3, {1, 0, 25}},
                      MatrixCase{"AsStrtodReads", "[0x1A -Infinity 1e400 +.5]", 0, 1, 4, {26, -kInf, kInf, 0.5}},
                      MatrixCase{"ColourMapRows", "[0 0 1;\n 1 0 0;]", 0, 2, 3, {0, 1, 0, 0, 1, 0}},
                      MatrixCase{"BareNumber", " 5;", 0, 1, 1, {5}},
                      MatrixCase{"RaggedRows", "[1 2; 3]", ZRARCHIVEM_GETVALUE_NOMATRIX, 0, 0, {}},
                      MatrixCase{"Unclosed", "[1 2", ZRARCHIVEM_READVALUESTRING_ENDOFFILE, 0, 0, {}}),
    [](const auto& testInfo) { return std::string(testInfo.param.name); });

class ArchiveTest : public ::testing::Test {
 protected:
  void SetUp() override { ZrErrorHandler::Instance().Clear(); }
  void Input(const std::string& text) {
    in.str(text);
    in.clear();
    archive.SelectInputStream(&in);
  }
  std::vector<ErrorCode> Errors() const {
    std::vector<ErrorCode> codes;
    for (int i = 0; i < ZrErrorHandler::Instance().Count(); ++i) codes.push_back(ZrErrorHandler::Instance().CodeAt(i));
    return codes;
  }

  // Reads the statement `name` into `value` and checks the code.
  template <class T>
  T Read(const char* name, ErrorCode code = 0, T value = T{}) {
    EXPECT_EQ(archive.ReadObject(name, value), code) << name;
    return value;
  }

  ZrArchiveM archive;
  std::istringstream in;
  std::ostringstream out;
};

TEST_F(ArchiveTest, FindsStatementsAnywhereByWholeName) {
  Input("  value2 = 3;\nname = 'a b';\nvalue = 5;\n");
  EXPECT_EQ(Read<int>("value"), 5);
  EXPECT_EQ(Read<std::string>("name"), "a b");
  EXPECT_EQ(Read<int>("value2"), 3);
  Read<int>("val", ZRARCHIVEM_READOBJECT);
  EXPECT_EQ(Errors(), (std::vector<ErrorCode>{ZRARCHIVEM_GETVALUESTRING_OBJECTNOTFOUND, ZRARCHIVEM_READOBJECT}));
}

TEST_F(ArchiveTest, ReadObjectChecksKinds) {
  Input("x = 5;\ns = 'abc';\nm = [1 2;\n3 4]';\nbad = [1 2; 3];\nn = abc;\nopen = [1 2\n");
  EXPECT_EQ(Read<FltMatrix>("x"), FltMatrix(1, 1, 5.0));
  EXPECT_EQ(Read<FltMatrix>("m")(0, 1), 3.0);
  Read<double>("s", ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
  Read<FltMatrix>("s", ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
  Read<double>("m", ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
  Read<FltMatrix>("bad", ZRARCHIVEM_READOBJECT_SYNTAXERROR);
  EXPECT_EQ(Errors(), (std::vector<ErrorCode>{ZRARCHIVEM_GETVALUE_NOMATRIX, ZRARCHIVEM_READOBJECT_SYNTAXERROR}));
  // Floating numbers that do not convert read as 0; integers fail.
  EXPECT_EQ(Read<double>("n", 0, 1.0), 0.0);
  Read<int>("n", ZRARCHIVEM_READOBJECT_SYNTAXERROR);
  Read<FltMatrix>("open", ZRARCHIVEM_READOBJECT);
  EXPECT_EQ(Errors(), (std::vector<ErrorCode>{ZRARCHIVEM_READVALUESTRING_ENDOFFILE, ZRARCHIVEM_GETVALUESTRING,
                                              ZRARCHIVEM_READOBJECT}));
}

TEST_F(ArchiveTest, NoStreamsNoStatement) {
  Read<int>("x", ZRARCHIVEM_READOBJECT);
  EXPECT_EQ(Errors().front(), ZRARCHIVEM_READOBJECT_NOINPUTSTREAM);
  EXPECT_EQ(archive.WriteObject("x", 1), ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM);
  Input("x 5;\n");
  std::string text;
  int kind = 0;
  EXPECT_EQ(archive.GetValueString("x", text, kind), ZRARCHIVEM_GETVALUESTRING_SYNTAXERROR);
}

TEST_F(ArchiveTest, WritesArraysAsColumns) {
  archive.SelectOutputStream(&out);
  archive.SetPrecision(3);
  const double values[] = {1.0, 2.5, -3.25};
  ASSERT_EQ(archive.WriteArray("positions", values, 3), 0);
  EXPECT_EQ(out.str(), "positions = [ \n1.000\n2.500\n-3.250\n]';\n");
  Input(out.str());
  double back[3] = {};
  ASSERT_EQ(archive.ReadArray("positions", back, 3), 0);
  EXPECT_EQ(back[2], -3.25);
  EXPECT_EQ(archive.ReadArray("positions", back, 2), ZRARCHIVEM_READARRAY_INVALIDSIZE);
}

TEST_F(ArchiveTest, SecondStatementOfANameIsRefused) {
  archive.SelectOutputStream(&out);
  ASSERT_EQ(archive.WriteObject("a", 1), 0);
  const std::string first = out.str();
  EXPECT_EQ(archive.WriteObject("a", 2), ZRARCHIVEM_WRITEOBJECT_ALREADYWRITTEN);
  const int values[] = {1, 2};
  EXPECT_EQ(archive.WriteArray("a", values, 2), ZRARCHIVEM_WRITEARRAY_ALREADYWRITTEN);
  EXPECT_EQ(archive.WriteMatrix("a", values, 2, 1), ZRARCHIVEM_WRITEMATRIX_ALREADYWRITTEN);
  EXPECT_EQ(archive.WriteMatrix("b", values, 2, 3), ZRARCHIVEM_WRITEMATRIX_INVALID_SIZE);
  EXPECT_EQ(archive.WriteObject("c", std::vector<std::string>{}), ZRARCHIVEM_WRITEOBJECT_STRINGARRAY_EMPTY);
  EXPECT_EQ(out.str(), first);
}

TEST_F(ArchiveTest, RoundTripsEveryKind) {
  archive.SelectOutputStream(&out);
  archive.SetPrecision(4);
  const short shorts[] = {-3, 4, 5, 6, 7, 8};
  const unsigned long big = 2000000000ul;
  ASSERT_EQ(archive.WriteMatrix("m", shorts, 6, 3), 0);
  ASSERT_EQ(archive.WriteObject("big", big), 0);
  ASSERT_EQ(archive.WriteObject("neg", -12L), 0);
  ASSERT_EQ(archive.WriteObject("c", static_cast<signed char>(-7)), 0);
  ASSERT_EQ(archive.WriteObject("f", 0.5f), 0);
  ASSERT_EQ(archive.WriteObject("s", std::string("hello world")), 0);
  ASSERT_EQ(archive.WriteObject("words", std::vector<std::string>{"x", "y"}), 0);
  FltMatrix frame(2, 2);
  frame(0, 1) = 7.0;
  ASSERT_EQ(archive.WriteObject("frame", frame), 0);
  EXPECT_NE(out.str().find("big = 2000000000;"), std::string::npos);
  EXPECT_NE(out.str().find("neg =        -12;"), std::string::npos);

  Input(out.str());
  short backShorts[6] = {};
  ASSERT_EQ(archive.ReadMatrix("m", backShorts, 6, 3), 0);
  EXPECT_EQ(backShorts[0], -3);
  EXPECT_EQ(backShorts[5], 8);
  EXPECT_EQ(archive.ReadMatrix("m", backShorts, 6, 2), ZRARCHIVEM_READMATRIX_INVALIDNUMCOLUMNS);
  EXPECT_EQ(archive.ReadMatrix("big", backShorts, 1, 1), ZRARCHIVEM_READMATRIX_TYPEMISMATCH);
  EXPECT_EQ(Read<unsigned long>("big"), big);
  EXPECT_EQ(Read<long>("neg"), -12);
  EXPECT_EQ(Read<signed char>("c"), -7);
  EXPECT_EQ(Read<float>("f"), 0.5f);
  EXPECT_EQ(Read<std::string>("s"), "hello world");
  EXPECT_EQ(Read<FltMatrix>("frame"), frame);
  std::string words[2];
  ASSERT_EQ(archive.ReadArray("words", words, 2), 0);
  EXPECT_EQ(words[1], "y");
}

// Numbers convert exactly as the C library converts them: every integer type as "%d" into an
// int that is then assigned, floating scalars with strtod, float elements with "%f" (strtof)
// and double elements with strtod. Each text is read as a scalar "x" and as the one element
// of an array "a", for every element type, and compared with the C library's own result.
struct NumberText {
  const char* name;
  const char* text;
};

class ArchiveNumberTest : public ::testing::TestWithParam<NumberText> {
 protected:
  void SetUp() override {
    text = GetParam().text;
    in.str("x = " + text + ";\na = [" + text + "];\n");
    archive.SelectInputStream(&in);
  }

  template <class... T>
  void ExpectAsTheCLibrary() {
    (ExpectOne<T>(), ...);
  }

  template <class T>
  void ExpectOne() {
    SCOPED_TRACE(typeid(T).name());
    T scalar{1}, element{};
    const ErrorCode scalarCode = archive.ReadObject("x", scalar);
    const ErrorCode elementCode = archive.ReadArray("a", &element, 1);
    if constexpr (std::is_integral_v<T>) {
      int expected = 0;
      const bool converts = std::sscanf(text.c_str(), "%d", &expected) == 1;
      EXPECT_EQ(scalarCode, converts ? 0 : ZRARCHIVEM_READOBJECT_SYNTAXERROR);
      EXPECT_EQ(elementCode, converts ? 0 : ZRARCHIVEM_READARRAY_SYNTAXERROR);
      if (converts) {
        EXPECT_EQ(scalar, static_cast<T>(expected));
        EXPECT_EQ(element, static_cast<T>(expected));
      }
    } else {
      ASSERT_EQ(scalarCode, 0);  // what does not convert reads as 0
      ExpectSame(scalar, static_cast<T>(std::strtod(text.c_str(), nullptr)));
      char* end = nullptr;
      const T fromElement = std::is_same_v<T, float> ? static_cast<T>(std::strtof(text.c_str(), &end))
                                                     : static_cast<T>(std::strtod(text.c_str(), &end));
      const bool converts = end != text.c_str();
      EXPECT_EQ(elementCode, converts ? 0 : ZRARCHIVEM_READARRAY_SYNTAXERROR);
      if (converts) ExpectSame(element, fromElement);
    }
  }

  template <class T>
  static void ExpectSame(T actual, T expected) {
    if (std::isnan(expected))
      EXPECT_TRUE(std::isnan(actual)) << actual;
    else
      EXPECT_EQ(actual, expected);
  }

  std::string text;
  std::istringstream in;
  ZrArchiveM archive;
};

TEST_P(ArchiveNumberTest, ConvertsAsTheCLibrary) {
  ExpectAsTheCLibrary<signed char, unsigned char, short, unsigned short, int, unsigned int, long, unsigned long, float,
                      double>();
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ArchiveNumberTest,
    ::testing::Values(
        NumberText{"Plain", "42"}, NumberText{"Negative", "-5"}, NumberText{"Plus", "+12"},
        NumberText{"TwoSigns", "+-5"}, NumberText{"LeadingZeros", "0007"}, NumberText{"WiderThanAByte", "300"},
        NumberText{"BelowASignedByte", "-129"}, NumberText{"WiderThanAShort", "70000"},
        NumberText{"WiderThanAnInt", "4000000000"}, NumberText{"BelowAnInt", "-2147483649"},
        NumberText{"WiderThanALong", "99999999999999999999"}, NumberText{"TrailingLetters", "12abc"},
        NumberText{"Word", "abc"}, NumberText{"Hex", "0x1A"}, NumberText{"HexFloat", "-0X1aP1"},
        NumberText{"HexPrefixOnly", "0x"}, NumberText{"Exponent", "2.5e1"}, NumberText{"ExponentWithoutDigits", "1e"},
        NumberText{"LeadingPoint", ".5"}, NumberText{"NegativeLeadingPoint", "-.5e-1"}, NumberText{"PointOnly", "."},
        NumberText{"Infinity", "inf"}, NumberText{"NegativeInfinityWord", "-Infinity"}, NumberText{"NaN", "nan"},
        NumberText{"NaNWithPayload", "-nan(12)"}, NumberText{"Overflow", "1e400"}, NumberText{"Underflow", "1e-400"},
        NumberText{"Subnormal", "4.9e-324"}, NumberText{"AboveAFloatMidpoint", "1.00000005960464477550"}),
    [](const auto& testInfo) { return std::string(testInfo.param.name); });

TEST_F(ArchiveTest, WalksMatrixStatementsInOrder) {
  Input("a = [1 2];\n\nb = 3;\n  c = [1;\n 2];\n");
  std::string name;
  FltMatrix m;
  ASSERT_EQ(archive.ReadFirstFltMatrix(name, m), 0);
  EXPECT_EQ(name, "a");
  EXPECT_EQ(archive.ReadNextFltMatrix(name, m), ZRARCHIVEM_READNEXTFLTMATRIX_TYPEMISMATCH);
  EXPECT_EQ(name, "b");
  ASSERT_EQ(archive.ReadNextFltMatrix(name, m), 0);
  EXPECT_EQ(name, "c");
  EXPECT_EQ(m.Rows(), 2u);
  EXPECT_EQ(archive.ReadNextFltMatrix(name, m), ZRARCHIVEM_READNEXTFLTMATRIX_EOF);
  ASSERT_EQ(archive.ReadFirstFltMatrix(name, m), 0);  // starts over
  EXPECT_EQ(name, "a");
}

TEST_F(ArchiveTest, FileOpenAndClose) {
  const auto path = std::filesystem::temp_directory_path() / ("quillon-archive-" + std::to_string(::getpid()));
  {
    ZrArchiveM writer(path.string(), false);
    ASSERT_EQ(writer.Open(), 0);
    ASSERT_EQ(writer.WriteObject("x", 42), 0);
    ASSERT_EQ(writer.Close(), 0);
  }
  ZrArchiveM reader(path.string(), true);
  ASSERT_EQ(reader.Open(), 0);
  int x = 0;
  ASSERT_EQ(reader.ReadObject("x", x), 0);
  EXPECT_EQ(x, 42);
  reader.Close();
  std::filesystem::remove(path);
  EXPECT_EQ(reader.Open(), ZRARCHIVEM_OPEN);
  ZrArchiveM nowhere("/nonexistent-dir/x.arc", false);
  ASSERT_EQ(nowhere.Open(), 0);
  EXPECT_EQ(nowhere.Close(), ZRARCHIVEM_CLOSE);
}

}  // namespace
}  // namespace quillon
