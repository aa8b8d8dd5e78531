// Symbol visibility of the library: everything is hidden unless marked VYRBASE_API.
#ifndef VYRBASE_CORE_VYREXPORT_H
#define VYRBASE_CORE_VYREXPORT_H

#if defined(_WIN32)
#if defined(VYRBASE_BUILDING)
#define VYRBASE_API __declspec(dllexport)
#else
#define VYRBASE_API __declspec(dllimport)
#endif
#else
#define VYRBASE_API __attribute__((visibility("default")))
#endif

#endif
