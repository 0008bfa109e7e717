// What every test program includes of the toolkit; only for precompiling.
#include <QtTest/QtTest>
#ifdef QT_WIDGETS_LIB
#include <QtWidgets/QtWidgets>
#endif
