#include "Drawing.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include "DrawnButton.h"

namespace PEBBLETON
{

namespace
{

constexpr std::size_t largestText = std::size_t{64} * 1024 * 1024; // with pictures in it; a device file may never end
constexpr const char* svgNamespace = "http://www.w3.org/2000/svg";
constexpr const char* inkscapeNamespace = "http://www.inkscape.org/namespaces/inkscape";
constexpr const char* pressedClass = "pressed";
constexpr const char* releasedClass = "released";

const xmlChar* asXml(const char* iText)
{
    return reinterpret_cast<const xmlChar*>(iText);
}

std::string take(xmlChar* iText)
{
    std::string text = iText == nullptr ? "" : reinterpret_cast<const char*>(iText);
    xmlFree(iText);
    return text;
}

struct ParseError {
    bool found;
    unsigned long line;
    std::string message;
    std::string address; // of what would have to be fetched
};

// Of several errors the first one: the others follow from it. librsvg stops at each, fatal or not.
void keepFirstError(void* ioError, xmlError* iError)
{
    auto& first = *static_cast<ParseError*>(ioError);
    if (!first.found && iError->level >= XML_ERR_ERROR) {
        const std::string message = iError->message == nullptr ? "" : iError->message;
        first = {true, static_cast<unsigned long>(iError->line), message.substr(0, message.find('\n')), ""};
        if (message.find("AttValue length too long") != std::string::npos) {
            first.message = "an embedded picture is too large: put it beside the drawing, as a file";
        }
    }
}

// Nothing is fetched for a drawing, neither from the disk nor from the network. libxml2 does not tell in which line it
// would be.
xmlParserInput* loadNothing(const char* iAddress, const char* /*iId*/, xmlParserCtxt* /*ioParser*/)
{
    auto& first = *static_cast<ParseError*>(xmlStructuredErrorContext);
    if (!first.found) {
        first.found = true;
        first.address = iAddress == nullptr ? "" : iAddress;
        first.message = "a part of it lies in another file, " + first.address;
    }
    return nullptr;
}

unsigned long countLines(const std::string& iText, const std::string& iUpTo)
{
    const auto end = std::search(iText.begin(), iText.end(), iUpTo.begin(), iUpTo.end());
    return 1 + static_cast<unsigned long>(std::count(iText.begin(), end, '\n'));
}

xmlNode* findElement(xmlNode* iFirst)
{
    while (iFirst != nullptr && iFirst->type != XML_ELEMENT_NODE) {
        iFirst = iFirst->next;
    }
    return iFirst;
}

std::vector<xmlNode*> collectElements(xmlDoc* iDocument)
{
    std::vector<xmlNode*> elements;
    xmlNode* root = xmlDocGetRootElement(iDocument);
    for (xmlNode* element = root; element != nullptr;) {
        elements.push_back(element);
        xmlNode* next = findElement(element->children);
        while (next == nullptr && element != root) {
            next = findElement(element->next);
            element = element->parent;
        }
        element = next;
    }
    return elements;
}

std::vector<std::string> readClasses(const xmlNode* iElement)
{
    std::istringstream stream(DrawingC::GetAttribute(iElement, "class"));
    std::vector<std::string> classes = {std::istream_iterator<std::string>(stream), {}};
    if (DrawingC::GetAttribute(iElement, "groupmode", inkscapeNamespace) == "layer") {
        const std::string label = DrawingC::GetAttribute(iElement, "label", inkscapeNamespace);
        if (label == pressedClass || label == releasedClass) {
            classes.push_back(label);
        }
    }
    return classes;
}

void writeClasses(xmlNode* iElement, const std::vector<std::string>& iClasses)
{
    std::string text;
    for (const std::string& name : iClasses) {
        text += (text.empty() ? "" : " ") + name;
    }
    xmlSetProp(iElement, asXml("class"), asXml(text.c_str()));
}

bool contains(const std::vector<std::string>& iClasses, const char* iName)
{
    return std::find(iClasses.begin(), iClasses.end(), iName) != iClasses.end();
}

// The last word on a property.
void setStyle(xmlNode* iElement, const std::string& iProperty)
{
    const std::string style = DrawingC::GetAttribute(iElement, "style");
    const std::string text = (style.empty() ? "" : style + ';') + iProperty + " !important";
    xmlSetProp(iElement, asXml("style"), asXml(text.c_str()));
}

// An editor hides with the same property.
void setShown(xmlNode* iElement, bool iShown)
{
    setStyle(iElement, iShown ? "display:inline" : "display:none");
}

void dressRoot(xmlNode* iRoot, Look iLook)
{
    std::vector<std::string> classes = readClasses(iRoot);
    classes.erase(std::remove(classes.begin(), classes.end(), pressedClass), classes.end());
    if (iLook == Look::Pressed) {
        classes.emplace_back(pressedClass);
    }
    writeClasses(iRoot, classes);
    setShown(iRoot, true); // a style that hides what is of the class means what is in the drawing
}

void dress(xmlNode* iElement, Look iLook)
{
    const std::vector<std::string> classes = readClasses(iElement);
    const bool pressed = contains(classes, pressedClass);
    const bool released = contains(classes, releasedClass);
    if (pressed || released) {
        writeClasses(iElement, classes);
        setShown(iElement, iLook == Look::Pressed ? !released : !pressed);
    }
}

void bareShape(xmlNode* iElement)
{
    setStyle(iElement, "filter:none");
    if (isButtonId(DrawingC::GetAttribute(iElement, "id"))) {
        for (xmlNode* group = iElement->parent; group->type == XML_ELEMENT_NODE; group = group->parent) {
            setStyle(group, "mask:none");
        }
    }
}

} // namespace

DrawingC::DrawingC(std::string iFileName) : mFileName(std::move(iFileName)), mDocument(nullptr)
{
}

DrawingC::~DrawingC()
{
    xmlFreeDoc(mDocument);
}

bool DrawingC::Load(FindingsC& ioFindings)
{
    if (!ReadText(ioFindings) || !Parse(ioFindings)) {
        return false;
    }
    mElements = collectElements(mDocument);
    if (!IsSvg(mElements.front(), "svg")) {
        AddError(mElements.front(),
                 "is no SVG drawing: its outermost element is no <svg xmlns=\"" + std::string(svgNamespace) + "\">",
                 ioFindings);
        return false;
    }
    NameTexts();
    return true;
}

const std::string& DrawingC::GetName() const
{
    return mFileName;
}

const std::vector<xmlNode*>& DrawingC::GetElements() const
{
    return mElements;
}

std::string DrawingC::GetText(Look iLook, Content iContent) const
{
    xmlDoc* copy = xmlCopyDoc(mDocument, 1);
    const std::vector<xmlNode*> elements = collectElements(copy);
    dressRoot(elements.front(), iLook);
    std::for_each(std::next(elements.begin()), elements.end(), [=](xmlNode* iElement) { dress(iElement, iLook); });
    if (iContent == Content::Shapes) {
        std::for_each(elements.begin(), elements.end(), bareShape);
    }
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(copy, &text, &size, "UTF-8");
    xmlFreeDoc(copy);
    if (text == nullptr) {
        throw std::runtime_error("there is no memory for the drawing");
    }
    return take(text);
}

std::string DrawingC::GetAttribute(const xmlNode* iElement, const char* iName, const char* iNamespace)
{
    return take(iNamespace == nullptr ? xmlGetNoNsProp(iElement, asXml(iName))
                                      : xmlGetNsProp(iElement, asXml(iName), asXml(iNamespace)));
}

bool DrawingC::IsSvg(const xmlNode* iElement, const char* iName)
{
    return xmlStrEqual(iElement->name, asXml(iName)) != 0 && iElement->ns != nullptr &&
           xmlStrEqual(iElement->ns->href, asXml(svgNamespace)) != 0;
}

unsigned long DrawingC::GetLine(const xmlNode* iElement)
{
    return static_cast<unsigned long>(std::max(xmlGetLineNo(iElement), 1L));
}

std::string DrawingC::Describe(const xmlNode* iElement) const
{
    const std::string id = mNamed.count(iElement) == 0 ? GetAttribute(iElement, "id") : "";
    const std::string name = reinterpret_cast<const char*>(iElement->name);
    return '<' + name + (id.empty() ? "" : " id=\"" + id + '"') + '>';
}

void DrawingC::AddError(const xmlNode* iElement, const std::string& iText, FindingsC& ioFindings) const
{
    ioFindings.AddErrorAt(mFileName, GetLine(iElement), iText);
}

bool DrawingC::ReadText(FindingsC& ioFindings)
{
    std::ifstream stream(mFileName, std::ios::binary);
    std::array<char, 65536> block = {};
    while (stream && mText.size() <= largestText) {
        stream.read(block.data(), static_cast<std::streamsize>(block.size()));
        mText.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (!stream && !stream.eof()) {
        ioFindings.AddError(std::string("cannot be read: ") + std::strerror(errno));
        return false;
    }
    if (mText.size() > largestText) {
        ioFindings.AddError("is larger than 64 MB: it is not read");
        return false;
    }
    if (mText.compare(0, 2, "\x1f\x8b") == 0) {
        ioFindings.AddError("is compressed: save it as plain SVG");
        return false;
    }
    return true;
}

bool DrawingC::Parse(FindingsC& ioFindings)
{
    ParseError error = {false, 1, "it is empty", ""};
    xmlSetStructuredErrorFunc(&error, keepFirstError);
    const xmlExternalEntityLoader loader = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(loadNothing);
    mDocument = xmlReadMemory(mText.data(), static_cast<int>(mText.size()), nullptr, nullptr,
                              XML_PARSE_NONET | XML_PARSE_BIG_LINES | XML_PARSE_NOENT);
    xmlSetExternalEntityLoader(loader);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
    if (!error.address.empty()) {
        error.line = countLines(mText, error.address);
    }
    mText.clear();
    if (mDocument == nullptr || error.found) {
        ioFindings.AddErrorAt(mFileName, error.line, "the XML is broken: " + error.message);
        return false;
    }
    return true;
}

// librsvg asks for an element by its id.
void DrawingC::NameTexts()
{
    int count = 0;
    for (xmlNode* element : mElements) {
        if (IsSvg(element, "text") && GetAttribute(element, "id").empty()) {
            mNamed.insert(element);
            xmlSetProp(element, asXml("id"), asXml(("pebbleton-text-" + std::to_string(++count)).c_str()));
        }
    }
}

} // namespace PEBBLETON
