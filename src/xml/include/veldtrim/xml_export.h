/// VELDTRIM_XML_API marks the classes that the XML library exports if it is a shared library (a DLL
/// on Windows). The build defines VELDTRIM_XML_SHARED for the library and for every program that
/// links it, and veldtrim_xml_EXPORTS only for the library. A static library needs no marks.
#pragma once

#if !defined(VELDTRIM_XML_SHARED)
#define VELDTRIM_XML_API
#elif !defined(_WIN32)
#define VELDTRIM_XML_API __attribute__((visibility("default")))
#elif defined(veldtrim_xml_EXPORTS)
#define VELDTRIM_XML_API __declspec(dllexport)
#else
#define VELDTRIM_XML_API __declspec(dllimport)
#endif
