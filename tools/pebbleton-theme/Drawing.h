#ifndef PEBBLETON_DRAWING_H
#define PEBBLETON_DRAWING_H

#include <set>
#include <string>
#include <vector>

#include <libxml/tree.h>

#include "Findings.h"
#include "Look.h"

namespace PEBBLETON
{

// An SVG drawing that holds both skins.
//
// An element of the class "pressed" is seen in the pressed skin alone, one of the class "released" in the normal skin
// alone, whatever else hides or shows it itself; a layer of Inkscape with one of these labels is of that class. The
// root element is of the class "pressed" in the pressed skin, and only there.
class DrawingC
{
public:
    explicit DrawingC(std::string iFileName);
    ~DrawingC();
    DrawingC(const DrawingC&) = delete;
    DrawingC& operator=(const DrawingC&) = delete;

    // Reads the file. False: it is no SVG drawing, as a finding says, and nothing else may be asked.
    bool Load(FindingsC& ioFindings);

    // The file as the user named it.
    const std::string& GetName() const;

    // All elements in the order in which they begin, the root first; they belong to this object.
    const std::vector<xmlNode*>& GetElements() const;

    // The drawing for one of the skins, as SVG.
    std::string GetText(Look iLook, Content iContent) const;

    // The value of an attribute that is in no namespace, or in iNamespace; empty: there is none.
    static std::string GetAttribute(const xmlNode* iElement, const char* iName, const char* iNamespace = nullptr);
    static bool IsSvg(const xmlNode* iElement, const char* iName);
    static unsigned long GetLine(const xmlNode* iElement);

    // The element's name, and its id if the author gave it one.
    std::string Describe(const xmlNode* iElement) const;

    // Adds what is wrong with one element.
    void AddError(const xmlNode* iElement, const std::string& iText, FindingsC& ioFindings) const;

private:
    bool ReadText(FindingsC& ioFindings);
    bool Parse(FindingsC& ioFindings);
    void NameTexts();

    std::string mFileName;
    std::string mText;
    xmlDoc* mDocument;
    std::vector<xmlNode*> mElements;
    std::set<const xmlNode*> mNamed; // the elements that got their ids here
};

} // namespace PEBBLETON

#endif
