#include "io/hdf5/form.h"

#include "io/hdf5/checked_file_driver.h"

namespace NBrenmark {

void CHdf5FormWriter::throwIfFailed() { NBrenmark::throwIfFailed(visitor.file); }

} // namespace NBrenmark
