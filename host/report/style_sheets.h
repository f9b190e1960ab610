#pragma once

namespace host {

// CSS without a character that XML would take for markup.
extern const char* const kDrawingStyle;  // of the diagrams, wherever they stand: drawing.css
extern const char* const kPictureStyle;  // of what stands around them in a picture: picture.css
extern const char* const kReportStyle;   // of what stands around them on a page: report.css

}  // namespace host
