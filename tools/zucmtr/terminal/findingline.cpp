#include "zucmtr/terminal/findingline.h"

#include "zucmtr/terminal/console.h"

void PrintFinding(const FindingLine& finding, bool json)
{
    if (json)
        PrintJson(text::FindingObject(finding));
    else
        PrintLine(text::FindingText(finding));
}
