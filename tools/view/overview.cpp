#include "view.h"
namespace view {
void WritePicture(const QString&, const QString&, Picture, const Options&) {}
} // namespace view
