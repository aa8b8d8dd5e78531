// A replacement of the global operator new for this test program only: it counts allocations
// and, when armed, makes one chosen allocation fail (the throwing forms throw std::bad_alloc,
// the std::nothrow forms answer null), as memory running out at that moment would. Allocations
// inside the toolkit's JPEG handler and character converters are spared (see Spared).
#ifndef VYR_TESTS_ALLOC_FAILINGALLOCATOR_H
#define VYR_TESTS_ALLOC_FAILINGALLOCATOR_H

namespace failingalloc {

// From now on, counts allocations and fails the `nth` (1 for the next); 0 only counts.
void Arm(long nth);
// Back to plain allocation; Count() keeps what was counted.
void Disarm();
// Allocations since the last Arm.
long Count();
// Whether the armed allocation was reached (and failed).
bool Failed();
// Whether the armed allocation was reached inside the toolkit's JPEG handler or character
// converters, where it is spared (they leak when an allocation fails inside them).
bool Spared();

}  // namespace failingalloc

#endif
