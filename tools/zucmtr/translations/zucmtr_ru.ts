<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>%1
Run &apos;%2 --help&apos; for the options and an example.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no command is given</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
