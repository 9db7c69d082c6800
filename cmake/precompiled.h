// Headers of others that nearly every file pulls in, parsed once. Each source still includes what it uses: a build
// without precompiled headers (-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON) passes as well.

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVector>

#include <H5Cpp.h>
