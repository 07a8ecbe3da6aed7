#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "channels/ChannelErrorCodes.h"
#include "channels/FltMatrixText.h"
#include "channels/ZrArchiveM.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

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

  ZrArchiveM archive;
  std::istringstream in;
  std::ostringstream out;
};

TEST_F(ArchiveTest, FindsStatementsAnywhereByWholeName) {
  Input("  value2 = 3;\nname = 'a b';\nvalue = 5;\n");
  int v = 0;
  ASSERT_EQ(archive.ReadObject("value", v), 0);
  EXPECT_EQ(v, 5);
  std::string s;
  ASSERT_EQ(archive.ReadObject("name", s), 0);
  EXPECT_EQ(s, "a b");
  ASSERT_EQ(archive.ReadObject("value2", v), 0);
  EXPECT_EQ(v, 3);
  EXPECT_EQ(archive.ReadObject("val", v), ZRARCHIVEM_READOBJECT);
  EXPECT_EQ(Errors(), (std::vector<ErrorCode>{ZRARCHIVEM_GETVALUESTRING_OBJECTNOTFOUND, ZRARCHIVEM_READOBJECT}));
}

TEST_F(ArchiveTest, ReadObjectChecksKinds) {
  Input("x = 5;\ns = 'abc';\nm = [1 2;\n3 4]';\nbad = [1 2; 3];\nn = abc;\nopen = [1 2\n");
  FltMatrix m;
  ASSERT_EQ(archive.ReadObject("x", m), 0);
  EXPECT_EQ(m, FltMatrix(1, 1, 5.0));
  ASSERT_EQ(archive.ReadObject("m", m), 0);
  EXPECT_EQ(m(0, 1), 3.0);
  double d = 1;
  EXPECT_EQ(archive.ReadObject("s", d), ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
  EXPECT_EQ(archive.ReadObject("s", m), ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
  EXPECT_EQ(archive.ReadObject("m", d), ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
  EXPECT_EQ(archive.ReadObject("bad", m), ZRARCHIVEM_READOBJECT_SYNTAXERROR);
  EXPECT_EQ(Errors(), (std::vector<ErrorCode>{ZRARCHIVEM_GETVALUE_NOMATRIX, ZRARCHIVEM_READOBJECT_SYNTAXERROR}));
  // Floating numbers that do not convert read as 0; integers fail.
  ASSERT_EQ(archive.ReadObject("n", d), 0);
  EXPECT_EQ(d, 0.0);
  int i = 0;
  EXPECT_EQ(archive.ReadObject("n", i), ZRARCHIVEM_READOBJECT_SYNTAXERROR);
  EXPECT_EQ(archive.ReadObject("open", m), ZRARCHIVEM_READOBJECT);
  EXPECT_EQ(Errors(), (std::vector<ErrorCode>{ZRARCHIVEM_READVALUESTRING_ENDOFFILE, ZRARCHIVEM_GETVALUESTRING,
                                              ZRARCHIVEM_READOBJECT}));
}

TEST_F(ArchiveTest, NoStreamsNoStatement) {
  int i = 0;
  EXPECT_EQ(archive.ReadObject("x", i), ZRARCHIVEM_READOBJECT);
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
  const unsigned long big = 4000000000ul;
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
  EXPECT_NE(out.str().find("big = 4000000000;"), std::string::npos);
  EXPECT_NE(out.str().find("neg =        -12;"), std::string::npos);

  Input(out.str());
  short backShorts[6] = {};
  ASSERT_EQ(archive.ReadMatrix("m", backShorts, 6, 3), 0);
  EXPECT_EQ(backShorts[0], -3);
  EXPECT_EQ(backShorts[5], 8);
  EXPECT_EQ(archive.ReadMatrix("m", backShorts, 6, 2), ZRARCHIVEM_READMATRIX_INVALIDNUMCOLUMNS);
  EXPECT_EQ(archive.ReadMatrix("big", backShorts, 1, 1), ZRARCHIVEM_READMATRIX_TYPEMISMATCH);
  unsigned long backBig = 0;
  ASSERT_EQ(archive.ReadObject("big", backBig), 0);
  EXPECT_EQ(backBig, big);
  short tooSmall = 0;
  EXPECT_EQ(archive.ReadObject("big", tooSmall), ZRARCHIVEM_READOBJECT_SYNTAXERROR);
  long neg = 0;
  ASSERT_EQ(archive.ReadObject("neg", neg), 0);
  EXPECT_EQ(neg, -12);
  signed char c = 0;
  ASSERT_EQ(archive.ReadObject("c", c), 0);
  EXPECT_EQ(c, -7);
  float f = 0;
  ASSERT_EQ(archive.ReadObject("f", f), 0);
  EXPECT_EQ(f, 0.5f);
  std::string s;
  ASSERT_EQ(archive.ReadObject("s", s), 0);
  EXPECT_EQ(s, "hello world");
  std::string words[2];
  ASSERT_EQ(archive.ReadArray("words", words, 2), 0);
  EXPECT_EQ(words[1], "y");
  FltMatrix back;
  ASSERT_EQ(archive.ReadObject("frame", back), 0);
  EXPECT_EQ(back, frame);
}

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
