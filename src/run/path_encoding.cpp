#include "run/path_encoding.h"

#include "platform/process_setup.h"

#include <codecvt>
#include <locale>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

void adoptPathEncoding() {
    if (pathsAreUtf8()) {
        // The library's own conversion passes flags that Windows does not support for UTF-8.
        boost::filesystem::path::imbue(
            std::locale(std::locale::classic(), new std::codecvt_utf8_utf16<wchar_t>));
    }
}

} // namespace veldtrim
