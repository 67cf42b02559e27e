#pragma once

#include "serialization/EelException.h"

namespace vorix::Serialization {

// A failure met while scanning or converting archive text, as opposed to a misuse of the
// archive: the settings layer tells the user that such data is not valid settings.
// Known to users as `XMLArchive::ParseException`.
class XMLArchiveParseException : public Eel::Exception {
  public:
    using Eel::Exception::Exception;
};

}  // namespace vorix::Serialization
