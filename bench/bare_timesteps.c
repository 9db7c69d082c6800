/* Bare HDF5 files of the shape of a timestep without rows, one after the other: what the library itself takes for them.
 *
 *   bare_timesteps FOLDER COUNT
 *
 * Each has 80 groups, 125 attributes and 22 datasets of 16 values, as an empty timestep of a deck has. */
#include <hdf5.h>

#include <stdio.h>
#include <stdlib.h>

enum
{
    groups = 80,
    attributes = 125,
    datasets = 22,
    values = 16
};

static void require(int holds)
{
    if (holds)
        return;
    fprintf(stderr, "bare_timesteps: HDF5 failed\n");
    exit(1);
}

static void writeFile(const char* path)
{
    static const double data[values];
    const hsize_t size = values;
    hid_t made[groups];
    char name[32];
    const hid_t file = H5Fcreate(path, H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
    const hid_t scalar = H5Screate(H5S_SCALAR);
    const hid_t row = H5Screate_simple(1, &size, NULL);
    require(file >= 0);
    for (int i = 0; i < groups; ++i) {
        snprintf(name, sizeof name, "group %d", i);
        made[i] = H5Gcreate2(i < 4 ? file : made[i % 4], name, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        require(made[i] >= 0);
    }
    for (int i = 0; i < attributes; ++i) {
        snprintf(name, sizeof name, "attribute %d", i);
        const hid_t attribute = H5Acreate2(made[i % groups], name, H5T_NATIVE_DOUBLE, scalar, H5P_DEFAULT, H5P_DEFAULT);
        require(H5Awrite(attribute, H5T_NATIVE_DOUBLE, data) >= 0 && H5Aclose(attribute) >= 0);
    }
    for (int i = 0; i < datasets; ++i) {
        snprintf(name, sizeof name, "dataset %d", i);
        const hid_t dataset =
            H5Dcreate2(made[3 * i], name, H5T_NATIVE_DOUBLE, row, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        require(H5Dwrite(dataset, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, data) >= 0 &&
                H5Dclose(dataset) >= 0);
    }
    for (int i = 0; i < groups; ++i)
        require(H5Gclose(made[i]) >= 0);
    require(H5Sclose(row) >= 0 && H5Sclose(scalar) >= 0 && H5Fclose(file) >= 0);
}

int main(int argc, char** argv)
{
    char path[4096];
    const int count = argc == 3 ? atoi(argv[2]) : 0;
    if (count < 1) {
        fprintf(stderr, "Usage: bare_timesteps FOLDER COUNT\n");
        return 2;
    }
    for (int number = 0; number < count; ++number) {
        snprintf(path, sizeof path, "%s/bare-%d.h5", argv[1], number);
        writeFile(path);
    }
    return 0;
}
