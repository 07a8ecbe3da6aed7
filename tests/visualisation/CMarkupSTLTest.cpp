#include <gtest/gtest.h>

#include <string>

#include "visualisation/CMarkupSTL.h"

namespace quillon {
namespace {

struct BadDocument {
  const char* name;
  std::string text;
  const char* error;
};

class LoadFailure : public ::testing::TestWithParam<BadDocument> {};

TEST_P(LoadFailure, LeavesAnEmptyTreeAndTheMessage) {
  CMarkupSTL xml;
  EXPECT_FALSE(xml.LoadText(GetParam().text));
  EXPECT_FALSE(xml.IsWellFormed());
  EXPECT_EQ(xml.GetError(), GetParam().error);
  EXPECT_FALSE(xml.FindSibling());
  EXPECT_EQ(xml.GetText(), "");
}

INSTANTIATE_TEST_SUITE_P(
    CMarkupSTL, LoadFailure,
    ::testing::Values(BadDocument{"Empty", "", "Element tag not found"},
                      BadDocument{"OnlyWhitespaceAndComments", " \n<!-- a --> <?pi x?>\t", "Element tag not found"},
                      BadDocument{"EndTagFirst", "</a>", "Element tag not found"},
                      BadDocument{"LoneLessThan", "text <", "Abrupt end within tag"},
                      BadDocument{"QuotedTagName", "<'a'>", "Tag starts with quote"},
                      BadDocument{"UnendedComment", "<!-- no end <a/>", "Invalid node"},
                      BadDocument{"UnendedCdata", "<a><![CDATA[ x </a>", "Invalid node"},
                      BadDocument{"UnendedProcessingInstruction", "<?xml version='1.0'", "Invalid node"},
                      BadDocument{"UnendedDoctype", "<!DOCTYPE a [ <!ENTITY x '>'> <a/>", "Invalid node"},
                      BadDocument{"EndsInsideTag", "<a x='1'", "End of tag not found"},
                      BadDocument{"UnclosedQuote", "<a x='1>text</a>", "End of tag not found"},
                      BadDocument{"LoneStartTag", "<a>", "End tag of a element not found"},
                      BadDocument{"NotAnEndTag", "<a><=></a>", "Expecting end tag of element a"},
                      BadDocument{"UnclosedChild", "<a><b></a>", "End tag does not correspond to b"},
                      BadDocument{"EndTagWithoutName", "<a></", "End tag not completed for element a"},
                      BadDocument{"EndTagWithoutBracket", "<a></a", "End tag not completed for element a"}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(CMarkupSTL, InputOfAnySizeOrDepthReadsOrFailsCleanly) {
  CMarkupSTL xml;
  EXPECT_FALSE(xml.LoadText(std::string(100u << 20, '<')));
  EXPECT_EQ(xml.GetError(), "Element tag not found");
  ASSERT_TRUE(xml.LoadText(std::string("<a>\0\0<b x='\0'/>\0</a>", 20)));
  ASSERT_TRUE(xml.FindSibling("a") && xml.EnterElement() && xml.FindSibling("b"));
  EXPECT_EQ(xml.GetAttribute("x"), std::string(1, '\0'));

  // Deep nesting needs no recursion.
  constexpr int kDepth = 1'000'000;
  std::string open;
  for (int i = 0; i < kDepth; ++i) open += "<a>";
  EXPECT_FALSE(xml.LoadText(open));
  EXPECT_EQ(xml.GetError(), "End tag of a element not found");

  std::string closed = open;
  for (int i = 0; i < kDepth; ++i) closed += "</a>";
  ASSERT_TRUE(xml.LoadText(closed));
  int depth = 0;
  while (xml.FindSibling("a") && xml.EnterElement()) ++depth;
  EXPECT_EQ(depth, kDepth);
  while (xml.LeaveElement()) --depth;
  EXPECT_EQ(depth, 0);
}

TEST(CMarkupSTL, NavigatesSiblingsAndChildren) {
  CMarkupSTL xml(
      "<?xml version='1.0'?><!DOCTYPE r [<!ELEMENT r ANY>]><r><a>1</a><b/><a>2</a><c><a>in</a></c></r><r2/>");
  ASSERT_TRUE(xml.IsWellFormed());
  EXPECT_FALSE(xml.FindSibling("r2"));  // only the first top-level element is parsed
  ASSERT_TRUE(xml.FindSibling("r"));
  EXPECT_FALSE(xml.LeaveElement());
  ASSERT_TRUE(xml.EnterElement());
  ASSERT_TRUE(xml.FindSibling("a"));
  EXPECT_EQ(xml.GetText(), "1");
  EXPECT_FALSE(xml.FindSibling("x"));  // failure leaves the cursor where it was
  ASSERT_TRUE(xml.FindSibling("a"));
  EXPECT_EQ(xml.GetText(), "2");
  EXPECT_FALSE(xml.FindSibling("b"));  // behind the current element only
  ASSERT_TRUE(xml.FindSibling());
  EXPECT_EQ(xml.GetTagName(), "c");
  EXPECT_EQ(xml.GetText(), "");  // has child elements
  ASSERT_TRUE(xml.EnterElement());
  ASSERT_TRUE(xml.FindSibling("a"));
  EXPECT_EQ(xml.GetText(), "in");
  ASSERT_TRUE(xml.LeaveElement());
  EXPECT_EQ(xml.GetTagName(), "c");
  ASSERT_TRUE(xml.LeaveElement());
  EXPECT_EQ(xml.GetTagName(), "r");
}

TEST(CMarkupSTL, ReadsTextAndAttributes) {
  CMarkupSTL xml(
      "<r><e k='v &amp; w' x=\"a>b\" kk=2 /><t>a &amp; b &unknown; &lt;&gt;&apos;&quot; &amp</t>"
      "<d>  <![CDATA[<raw> &amp;]]> tail</d><p>a<![CDATA[x]]></p></r>");
  ASSERT_TRUE(xml.FindSibling("r") && xml.EnterElement());
  ASSERT_TRUE(xml.FindSibling("e"));
  EXPECT_EQ(xml.GetAttribute("k"), "v & w");
  EXPECT_EQ(xml.GetAttribute("x"), "a>b");
  EXPECT_EQ(xml.GetAttribute("kk"), "2");
  EXPECT_EQ(xml.GetAttribute("K"), "");
  EXPECT_EQ(xml.GetAttribute("v"), "");  // values are not names
  EXPECT_EQ(xml.GetText(), "");
  ASSERT_TRUE(xml.FindSibling("t"));
  EXPECT_EQ(xml.GetText(), "a & b &unknown; <>'\" &amp");
  ASSERT_TRUE(xml.FindSibling("d"));
  EXPECT_EQ(xml.GetText(), "<raw> &amp;");
  ASSERT_TRUE(xml.FindSibling("p"));
  EXPECT_EQ(xml.GetText(), "a<![CDATA[x]]>");
}

TEST(CMarkupSTL, InsertedNodesShiftTheRecordsBehindThem) {
  CMarkupSTL xml("<r><a k='1'>x</a><b>y</b></r>");
  ASSERT_TRUE(xml.FindSibling("r") && xml.EnterElement() && xml.FindSibling("b"));
  ASSERT_TRUE(xml.InsertNode(CMarkupSTL::MNT_COMMENT, "begin", true));
  EXPECT_EQ(xml.GetText(), "begin");
  ASSERT_TRUE(xml.FindSibling("b"));
  EXPECT_EQ(xml.GetText(), "y");
  ASSERT_TRUE(xml.InsertNode(CMarkupSTL::MNT_COMMENT, "end", false));
  EXPECT_EQ(xml.GetDocumentText(), "<r><a k='1'>x</a><!--begin--><b>y</b><!--end--></r>");

  ASSERT_TRUE(xml.LeaveElement() && xml.EnterElement() && xml.FindSibling("a"));
  EXPECT_TRUE(xml.InsertNode(CMarkupSTL::MNT_PROCESSING_INSTRUCTION, "pi", true));
  EXPECT_TRUE(xml.InsertNode(CMarkupSTL::MNT_CDATA_SECTION, "c<", false));
  EXPECT_FALSE(xml.InsertNode(CMarkupSTL::MNT_CDATA_SECTION, "]]>", false));
  EXPECT_TRUE(xml.InsertNode(CMarkupSTL::MNT_TEXT, "<&>'\"", false));
  EXPECT_EQ(xml.GetText(), "<&>'\"");
  EXPECT_TRUE(xml.InsertNode(CMarkupSTL::MNT_ELEMENT, "n", false));
  EXPECT_FALSE(xml.InsertNode(CMarkupSTL::MNT_ELEMENT, "bad name", false));
  EXPECT_EQ(xml.GetDocumentText(),
            "<r><?pi?><![CDATA[c<]]>&lt;&amp;&gt;'\"<n/><a k='1'>x</a><!--begin--><b>y</b><!--end--></r>");

  // The records still index the text: every element reads as before, the new one included.
  ASSERT_TRUE(xml.LeaveElement() && xml.EnterElement());
  ASSERT_TRUE(xml.FindSibling("n"));
  ASSERT_TRUE(xml.FindSibling("a"));
  EXPECT_EQ(xml.GetAttribute("k"), "1");
  EXPECT_EQ(xml.GetText(), "x");
  ASSERT_TRUE(xml.FindSibling("b"));
  EXPECT_EQ(xml.GetText(), "y");
}

TEST(CMarkupSTL, EscapesAttributesMoreThanText) {
  EXPECT_EQ(CMarkupSTL::EscapeText("<&>'\"", true), "&lt;&amp;&gt;&apos;&quot;");
  EXPECT_EQ(CMarkupSTL::EscapeText("<&>'\"", false), "&lt;&amp;&gt;'\"");
  EXPECT_EQ(CMarkupSTL::UnescapeText(CMarkupSTL::EscapeText("a<&>'\"b", true)), "a<&>'\"b");
}

}  // namespace
}  // namespace quillon
