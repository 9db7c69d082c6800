#pragma once
// What belongs to the user and not to a deck, in the store that the applications share. A conversion asks it
// whether to compress, in which units to show numbers, and where plug-ins lie.

#include <QSettings>
#include <QString>
#include <QVariant>
#include <map>
#include <string>

namespace NBrenmark {

class CUserPreferences
{
public:
    enum EScope
    {
        eUserScope,
        eSystemScope
    };

    /// Reads every key. A store that can't be read gives the defaults, key by key.
    CUserPreferences();
    virtual ~CUserPreferences() = default;
    CUserPreferences(const CUserPreferences&) = delete;
    CUserPreferences& operator=(const CUserPreferences&) = delete;

    /// What the store of a scope has under a key, "group/name"; else the default.
    QVariant value(const QString& key, const QVariant& defaultValue, EScope scope = eUserScope) const;
    /// What was read for a key of the table, in the type of its default; an invalid value for any other key.
    QVariant preference(const std::string& key) const;

    /// Whether the writers of files compress.
    bool compress() const { return compressFiles; }
    /// The folder in which plug-ins and their preference files are sought.
    QString pluginFolder() const;
    /// Path of the materials database. Its folder is made if it is missing; where that can't be, the file is
    /// sought among the user's documents. A path of the old form is replaced in the store.
    QString materialsDatabase();

private:
    QSettings& systemStore;
    QSettings& userStore;
    std::map<std::string, QVariant> preferences;
    bool compressFiles;
};

/// Opens the stores that all preferences of the process are read from, which are kept until its end: where memory is
/// short the making of such a store may end the process inside of Qt, and so it comes before the work. The first
/// preferences do it where nothing else has. Any thread may.
/// \param folder  of the user's store, in place of the user's own: opens them anew, while no preferences are in use
void openUserStores(const QString& folder = QString());

/// The process-wide object, made at the first call. That comes before any worker runs: there is no lock.
CUserPreferences& userPreferences();

/// Deletes the object; the next call of userPreferences makes it anew.
void releaseUserPreferences();

} // namespace NBrenmark
