#include <KtUtResource.h>

#include "kthost/runtime/ModuleLoader.h"

HMODULE KtUtResource::loadDll(const wchar_t* name, int /*language*/, int /*flags*/) {
    kthost::ModuleLoader* modules = kthost::ModuleLoader::current();
    return modules == nullptr ? nullptr : modules->loadResource(name);
}

bool KtUtResource::freeDll(HMODULE library, int /*flags*/) {
    kthost::ModuleLoader* modules = kthost::ModuleLoader::current();
    return modules != nullptr && modules->freeResource(library);
}
