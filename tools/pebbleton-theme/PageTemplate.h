#ifndef PEBBLETON_PAGE_TEMPLATE_H
#define PEBBLETON_PAGE_TEMPLATE_H

namespace PEBBLETON
{

// The text of page.html, in which the theme takes the place of the word @THEME@.
extern const char* const pageTemplate;

} // namespace PEBBLETON

#endif
