#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>

class CArchive;
class CObject;

/// What an archive must know of a class to name it in a file and to make an object of it again.
struct CRuntimeClass {
    const char* m_lpszClassName;
    std::uint16_t m_nSchema;
    std::unique_ptr<CObject> (*m_pfnCreateObject)(); ///< null for a class that is not created by name
};

/// The serialisable object base. The module has no application framework to take it from, so this one has
/// what the template classes need of it: the same virtual operations, in the same slots.
class CObject {
public:
    static const CRuntimeClass kClass;

    virtual const CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    /// Stores or loads the object, whichever the archive does. The base has nothing to store.
    virtual void Serialize(CArchive& archive);
    /// Diagnostic: a class that can be in a bad state ends the program here if it is. The base cannot.
    virtual void AssertValid() const;
    /// Diagnostic: prints the class name.
    virtual void Dump(std::ostream& out) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

protected:
    CObject() = default;
};
