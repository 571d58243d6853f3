// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/VisaLibrary.h"

#include "devices/Literals.h"

namespace corvane {

VisaLibrary::VisaLibrary(const QString &path)
    : library(u"VISA library"_s, libraryNames::visa(libraryNames::thisSystem), path)
    , file(library.file("viOpen"))
{
    library.require(viOpenDefaultRM, "viOpenDefaultRM");
    library.require(viOpen, "viOpen");
    library.require(viSetAttribute, "viSetAttribute");
    library.require(viWrite, "viWrite");
    library.require(viRead, "viRead");
    library.require(viClear, "viClear");
    library.require(viClose, "viClose");
    library.require(viStatusDesc, "viStatusDesc");
}

} // namespace corvane
