#include "legacy/ArchiveIndexTable.h"

#include <gtest/gtest.h>

namespace {

ArchiveIndexTable classObjectObjectClassObject() {
    ArchiveIndexTable table;
    table.handOutToClass();
    table.handOutToObject();
    table.handOutToObject();
    table.handOutToClass();
    table.handOutToObject();
    return table;
}

TEST(ArchiveIndexTable, GivesTheFirstClassIndexOne) {
    EXPECT_TRUE(classObjectObjectClassObject().isClass(1));
}

TEST(ArchiveIndexTable, CountsObjectsBetweenClasses) {
    EXPECT_TRUE(classObjectObjectClassObject().isClass(4));
}

TEST(ArchiveIndexTable, TellsAnObjectFromAClass) {
    const ArchiveIndexTable table = classObjectObjectClassObject();
    EXPECT_FALSE(table.isClass(2));
    EXPECT_TRUE(table.isObject(2));
    EXPECT_TRUE(table.isObject(5));
    EXPECT_FALSE(table.isObject(4));
}

TEST(ArchiveIndexTable, NeverGivesIndexZero) {
    EXPECT_FALSE(classObjectObjectClassObject().isClass(0));
    EXPECT_FALSE(classObjectObjectClassObject().isObject(0));
}

TEST(ArchiveIndexTable, HasNotGivenWhatComesNext) {
    EXPECT_FALSE(classObjectObjectClassObject().isClass(6));
    EXPECT_FALSE(classObjectObjectClassObject().isObject(6));
}

} // namespace
