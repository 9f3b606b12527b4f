// The settings of one import, as they arrive on the command line: a table from key to text.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

/// The known keys. The numbers are those that the launching side writes; 13 and 17 have no name.
enum ImportKey : std::int32_t {
    MAJOR_VERSION = 0,
    MINOR_VERSION = 1,
    COMMAND = 2,
    TESSELLATION_QUALITY = 3,
    LOGLEVEL = 4,
    CURVERADIUS = 5,
    SMOOTH_CURVES = 6,
    INCLUDE_NURBS = 7,
    COLLAPSE_HIERARCHY = 8,
    SPLIT_LAYERS = 9,
    FRAME = 10,
    IMPORT_FILENAME = 11,
    OUTPUT_FILENAME = 12,
    DEBUGOBX = 14,
    TESSELLATE = 15,
    TEXTURE_FOLDER = 16,
    COMPUTE_NORMALS = 18,
    SEPARATE_PARTS = 19,
    UNIQUE_MATERIALS = 20,
    EXPERIMENTAL = 21,
    GROUP_TYPE = 22,
    ALT_TESSELLATION = 23,
    DESIRED_UNIT = 24,
    DEFORMABLE_MESHES = 25,
    MAYA_VERSION = 26,
    LAST = 27, // end marker
};

/// A table of settings with typed access. Values are texts and converted when read; a getter never
/// fails but returns the caller's default for a missing key. Any key number is stored.
///
/// The order of the virtual operations is part of the contract (the number before each is its
/// slot); there is no virtual destructor, so never delete a derived object through this class.
class ImportArgs {
public:
    /// Holds MAJOR_VERSION 7 and MINOR_VERSION 3.
    ImportArgs();
    /// Decodes each argument after the program's name: base64 of the key in decimal, a blank and
    /// the value, quotes around it allowed. Later arguments win. No defaults are added, and nothing
    /// fails: see `insertArgument` for what malformed ones become.
    ImportArgs(int argc, const char* const* argv);

    /* 0 */ virtual bool has(std::int32_t key) const;
    /* 1 */ virtual void setString(std::int32_t key, std::string text);
    /* 2 */ virtual std::string getString(std::int32_t key, std::string defaultText) const;
    /// A copy on the heap that the caller releases with std::free; null if memory runs out.
    /* 3 */ virtual char* getCString(std::int32_t key, const char* defaultText) const;
    /// The number that the text begins with, 0 if with none; clamped to 32 bits.
    /* 4 */ virtual std::int32_t getInt(std::int32_t key, std::int32_t defaultValue) const;
    /* 5 */ virtual void setInt(std::int32_t key, std::int32_t value);
    /// False for exactly "0" and "false"; every other text is true, the empty one and "False" too.
    /* 6 */ virtual bool getBool(std::int32_t key, bool defaultValue) const;
    /* 7 */ virtual void setBool(std::int32_t key, bool value);
    /* 8 */ virtual double getDouble(std::int32_t key, double defaultValue) const;
    /// Keeps six significant digits.
    /* 9 */ virtual void setDouble(std::int32_t key, double value);

    /// The upper-case name of a key; a sentence for a number without one.
    static const char* keyName(std::int32_t key);
    /// The key of a name, upper or lower case; -1, and a line on standard output, for another text.
    static std::int32_t keyFromName(const std::string& name);

    /// A line for each entry, by ascending key: "FRAME: 12".
    void print(std::ostream& stream) const;

    /// The entries by ascending key in the form that the constructor decodes.
    std::vector<std::string> toArgumentStrings() const;
    /// The same as the argument vector of a process, `programPath` first and a null pointer last.
    /// The array and each text are the caller's, to be released with std::free; the array has room
    /// for at least 128 pointers.
    char** toArgv(const char* programPath) const;

private:
    /// Stores one argument. A quote at its beginning goes, and its last character with it. Text
    /// without a blank is stored whole under the number that it begins with; a key that is no
    /// number becomes 0.
    void insertArgument(std::string argument);
    /// The stored text. Empty for a key that is not stored: a derived class may answer `has`
    /// otherwise than this one.
    const std::string& valueOf(std::int32_t key) const;

    std::map<std::int32_t, std::string> m_values;
};

std::ostream& operator<<(std::ostream& stream, const ImportArgs& arguments);
