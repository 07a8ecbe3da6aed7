// A Qt host of the installed widget: loads a document and hides and shows its node.
#include <quillon/QuillonWidget.h>

#include <QApplication>
#include <cstdio>
#include <string>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  quillon::QuillonWidget viewer;
  viewer.resize(480, 480);
  viewer.show();
  std::string annotated, groups;
  const int code = viewer.loadDocument(R"(<?xml version="1.0"?>
<Visualisation><Version>1.0</Version><Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
DEF Thing Shape { geometry Box { size 0.1 0.1 0.1 } }
]]></Scene><ExternRoute from="P[1][0][1D]" to="Thing"/></Visualisation>
)",
                                       annotated, groups);
  viewer.viewAll();
  application.processEvents();
  const bool hidden = viewer.hideNode("Thing") && viewer.unhideNode("Thing") && !viewer.hideNode("Nothing");
  if (code != 0 || groups != "[P, 1]" || !hidden) {
    std::fprintf(stderr, "widget_host: load %d, groups %s\n", code, groups.c_str());
    return 1;
  }
  std::printf("widget_host: passed\n");
  return 0;
}
