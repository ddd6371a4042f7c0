// What commands that examine files print: one line, or one JSON object, per finding.
#pragma once

#include "text/findingline.h"

/// Prints text::FindingText, or text::FindingObject as JSON.
void PrintFinding(const FindingLine& finding, bool json);
