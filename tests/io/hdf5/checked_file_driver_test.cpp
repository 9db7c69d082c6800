#include "io/hdf5/checked_file_driver.h"

#include "io/hdf5/error_text.h"
#include "support/temp_folder.h"

#include <QFile>
#include <H5Cpp.h>
#include <gtest/gtest.h>

namespace NBrenmark {

TEST(CheckedFiles, leaveAloneWhatALinkInPlaceOfANewOneLeadsTo)
{
    const CTempFolder folder;
    folder.write("other", "stays");
    QFile::link(folder.path("other"), folder.path("0.h5"));
    H5::FileAccPropList access;
    useCheckedFiles(access);
    catchHdf5Errors();
    const std::string path = folder.path("0.h5").toStdString();
    EXPECT_THROW(H5::H5File(path, H5F_ACC_TRUNC, H5::FileCreatPropList::DEFAULT, access), H5::Exception);
    EXPECT_EQ(folder.read("other"), "stays");
}

} // namespace NBrenmark
