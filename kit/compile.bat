@echo off
rem The batch file of the compile kit on Windows: compiles the written C file and the kit's runtime into one
rem program. Its only argument is the output name; the C file is TESSALY_C_FILE, or the setting FCompFileName.
rem With /compiler it only says which compiler it would take.
rem Exit status: 0 done, 64 wrong argument, 127 no compiler, 1 no C file to compile, else the compiler's own.
rem What is printed about the C file is also in the log, the file of that name with ".log" after it.
rem The window stays open after an error, unless TESSALY_NO_PAUSE is set. CC is the name or the full path of a compiler.
rem
rem Paths are in quotes and are never put through CALL or delayed expansion: they may contain & ^ % ! ( ).
rem No program or library may come out of the folder with the PSF file, which is the current one at first:
rem programs are called by their paths, and all of them in the folder of the system.

setlocal EnableExtensions DisableDelayedExpansion
set "NoDefaultCurrentDirectoryInExePath=1"
set "system=%SystemRoot%\System32"
set "kit=%~dp0"
set "status=0"
set "hidden="

if "%~1"=="" goto usage
if "%~1"=="/compiler" goto tell_compiler
if not "%~2"=="" goto usage
set "output=%~f1"
for %%e in (.c .h .psf) do if /i "%~x1"=="%%e" goto source_name
if exist "%output%\*" goto not_a_file

set "place=HKEY_LOCAL_MACHINE\SOFTWARE\Ostrel\OstrelCompiler"
if defined TESSALY_SETTINGS for %%s in ("%TESSALY_SETTINGS%") do set "place=%%~fs"
pushd "%system%"
if /i not "%CD%"=="%system%" goto no_system
call :find_source
popd
if not defined source goto no_setting
for %%s in ("%source%") do set "source=%%~fs"
cd /d "%system%"
set "log=%source%.log"
if /i "%source%"=="%output%" goto same_name
if /i "%log%"=="%output%" goto log_name

rem An old program must not pass for the result of a compile that never came about, nor an old log for that of this one.
if exist "%output%" del /f /q "%output%"
if exist "%log%\*" goto without_log
if exist "%log%" del /f /q "%log%"
if exist "%log%" goto without_log
copy /y nul "%log%" >nul 2>nul
if not exist "%log%" goto without_log
set "kind="
call :build >>"%log%" 2>&1
set "status=%errorlevel%"
if "%status%"=="0" goto logged
call :hide_names
if not defined hidden goto logged
call :build >"%log%" 2>&1
set "status=%errorlevel%"
if "%status%"=="0" goto logged
call :find_missed
if not defined missed goto logged
set "hidden="
call :build >"%log%" 2>&1
set "status=%errorlevel%"

:logged
if "%kind%"=="cl" call :forget_name
type "%log%" >&2
goto built

:without_log
call :build
set "status=%errorlevel%"

:built
if "%status%"=="0" goto end
if exist "%output%" del /f /q "%output%"
goto end

:build
if exist "%output%" goto in_use
if not exist "%source%" goto no_source
call :find_compiler
if not defined compiler exit /b 127

call :options_%kind%
for %%o in ("%output%") do set "beside=%%~dpo."
set "runtime=%kit%runtime.c"
set coverage=
if "%kind%"=="gcc" if defined TESSALY_COVERAGE set coverage=-dumpdir "%source%." -O0 --coverage
set "kept="
if defined LOCALAPPDATA call :find_runtime
if defined kept set "runtime=%kept%\runtime.obj"
call :compile_with_%kind%
exit /b %errorlevel%

rem ---- Names that the kit has and a block may have, too

rem Sets hidden to options that leave out those of the kit's own calls whose names the block has itself: the compiler
rem points at them.
:hide_names
pushd "%kit%include"
for /f "tokens=1,2" %%d in (vexlib.h) do if "%%d"=="#ifndef" call :hide_name %%e <"%log%"
popd
exit /b

:hide_name
for /f "delims=" %%l in ('%system%\find.exe "%1 in vexlib.h"') do set "hidden=%hidden% -D%1=%1"
exit /b

rem Sets missed when the block misses such a call after all: it was only called in a wrong way.
:find_missed
set "missed="
for %%m in (implicit-function-declaration] C4013) do call :find_miss %%m <"%log%"
exit /b

:find_miss
for /f "delims=" %%l in ('%system%\find.exe "%1"') do set "missed=1"
exit /b

rem ---- The C file

rem Sets source to the setting, from place: the registry export file that TESSALY_SETTINGS names, or else the registry.
rem The editor is a 32-bit program, so on 64-bit Windows its settings are in the 32-bit view.
:find_source
set "source=%TESSALY_C_FILE%"
if defined source exit /b
if defined TESSALY_SETTINGS goto find_source_in_file
for %%v in (/reg:32 "") do if not defined source call :query_source %%~v
exit /b

:query_source
for /f "tokens=2,*" %%a in ('%system%\reg.exe query "%place%" /v FCompFileName %1 2^>nul') do if "%%a"=="REG_SZ" set "source=%%b"
exit /b

:find_source_in_file
if not exist "%place%" exit /b
for /f "usebackq tokens=1,* delims==" %%a in (`type "%place%"`) do if /i "%%~a"=="FCompFileName" set "source=%%~b"
if defined source set "source=%source:\\=\%"
exit /b

rem ---- The compiler: sets compiler, and kind to gcc, clang or cl; or says why there is none

:find_compiler
set "compiler="
if defined CC call :use_own_compiler
if defined CC if not defined compiler goto wrong_compiler
if not defined compiler call :find_in_path
if not defined compiler call :find_in_program_folder
if not defined compiler call :find_visual_studio
if not defined compiler goto no_compiler
exit /b 0

:tell_compiler
cd /d "%system%"
call :find_compiler
if not defined compiler exit /b 127
for %%c in ("%compiler%") do echo %%~c
exit /b 0

:use_own_compiler
for %%c in ("%CC%" "%CC%.exe") do if not defined compiler if exist "%%~fc" if not exist "%%~fc\*" set "compiler=%%~fc"
for %%c in ("%CC%" "%CC%.exe") do if not defined compiler if not "%%~$PATH:c"=="" set "compiler=%%~$PATH:c"
if defined compiler call :tell_kind
exit /b

:find_in_path
for %%c in (gcc.exe clang.exe cl.exe) do if not defined compiler if not "%%~$PATH:c"=="" set "compiler=%%~$PATH:c"
if defined compiler call :tell_kind
exit /b

:find_in_program_folder
if defined ProgramFiles set "compiler=%ProgramFiles%\LLVM\bin\clang.exe"
if defined ProgramW6432 set "compiler=%ProgramW6432%\LLVM\bin\clang.exe"
if not exist "%compiler%" set "compiler="
set "kind=clang"
exit /b

rem Visual Studio puts its compiler into the environment by a batch file; where that is, its own finder tells. That is
rem called out of its folder, since FOR cannot take a command in quotes with ( ) in them.
:find_visual_studio
set "studio="
if not defined ProgramFiles(x86) exit /b
set "installer=%ProgramFiles(x86)%\Microsoft Visual Studio\Installer"
if not exist "%installer%\vswhere.exe" exit /b
pushd "%installer%"
for /f "delims=" %%v in ('.\vswhere.exe -latest -products * -requires Microsoft.VisualStudio.Component.VC.Tools.x86.x64 -property installationPath') do set "studio=%%v"
popd
if not defined studio exit /b
if not exist "%studio%\VC\Auxiliary\Build\vcvars64.bat" exit /b
call "%studio%\VC\Auxiliary\Build\vcvars64.bat" >nul
for %%c in (cl.exe) do if not "%%~$PATH:c"=="" set "compiler=%%~$PATH:c"
set "kind=cl"
exit /b

:tell_kind
for %%c in ("%compiler%") do set "name=%%~nc"
set "kind=gcc"
if /i not "%name:clang=%"=="%name%" set "kind=clang"
if /i "%name%"=="cl" set "kind=cl"
if /i "%name%"=="clang-cl" set "kind=cl"
exit /b

rem ---- Options: warnings for what users do wrong. Not all that a handler is given must be used, nor all fields of a
rem frame be set. What is in CFLAGS comes last, so that it can take away what is here.

rem gcc counts the lone CR after a prototype as a line end, but not where it quotes the source: its excerpts would
rem show other lines than it means.
:options_gcc
set options=-fno-diagnostics-show-caret -static
goto options_of_both

rem clang would warn about every letter of the ANSI code page in a text.
:options_clang
set options=-Wno-invalid-source-encoding -D_CRT_SECURE_NO_WARNINGS

:options_of_both
set options=%options% -Wall -Wextra -Wno-unused-parameter -Wno-missing-field-initializers -Wformat-security -Wshadow
set options=%options% -g -O1 -std=gnu11 -D__USE_MINGW_ANSI_STDIO=1 -I "%kit%include" %CFLAGS%
set "environment="
exit /b

:options_cl
set options=/nologo /W4 /wd4100 /O1 /std:c11 /D_CRT_SECURE_NO_WARNINGS /I "%kit%include" %CFLAGS%
for %%v in (INCLUDE CL _CL_) do if not defined %%v set "%%v= "
set "environment=%INCLUDE:"=% %CL:"=% %_CL_:"=%"
exit /b

rem ---- The runtime, as an object in the user's cache: each program would have it compiled again. A folder there belongs
rem to one compiler with its options and one kit, which its file "key" tells. It comes when all else is there and never
rem changes, so several builds may look and make at once.

rem Sets kept to the folder with the object, or to nothing where it cannot be kept.
:find_runtime
set "cache=%LOCALAPPDATA%\Ostrel\Tessaly\Cache"
if not exist "%cache%\*" mkdir "%cache%" 2>nul
if not exist "%cache%\*" exit /b
call :find_key
call :look_for_runtime
if not defined kept call :make_runtime
exit /b

rem Only numbers and times go through delayed expansion.
:find_key
for %%c in ("%compiler%") do set "key=%%~fc %%~tzc %options:"=% %environment%"
pushd "%kit%runtime"
setlocal EnableDelayedExpansion
set "files="
for %%f in (..\runtime.c * ..\include\*) do set "files=!files! %%~tzf"
endlocal & set "files=%files%"
popd
set "key=%key%%files%"
exit /b

:look_for_runtime
pushd "%cache%"
for /d %%d in (runtime-*) do if not defined kept if exist "%%d\key" call :compare_key %%d
popd
exit /b

:compare_key
set "its="
for /f "usebackq delims=" %%k in ("%cache%\%1\key") do set its=%%k
if not defined its exit /b
if "%its:"=%"=="%key%" set "kept=%cache%\%1"
exit /b

rem Nothing is kept in the very minute in which the kit or the compiler changed: it could change again without a trace.
rem Builds that start in the same second get the same RANDOM: only one of them hears nothing from MKDIR, and the others
rem ask for the next numbers.
:make_runtime
for /f "skip=15" %%d in ('dir /b /ad /o-d "%cache%\runtime-*" 2^>nul') do rmdir /s /q "%cache%\%%d"
set "made="
for %%t in (1 2 3 4 5 6 7 8) do if not defined made call :make_own
if not defined made exit /b
>"%cache%\%own%\new" echo "%key%"
for %%n in ("%cache%\%own%\new") do set "now=%%~tn"
for %%c in ("%compiler%") do if "%%~tc"=="%now%" set "made="
pushd "%kit%runtime"
for %%f in (..\runtime.c * ..\include\*) do if "%%~tf"=="%now%" set "made="
popd
if defined made call :make_object_with_%kind%
if defined made ren "%cache%\%own%\new" key
if defined made call :compare_key %own%
if not defined kept rmdir /s /q "%cache%\%own%"
exit /b

:make_own
set "own=runtime-%RANDOM%-%RANDOM%-%RANDOM%"
set "made=1"
for /f "delims=" %%e in ('mkdir "%cache%\%own%" 2^>^&1') do set "made="
exit /b

:make_object_with_gcc
:make_object_with_clang
"%compiler%" %options% -w -O0 -c -o "%cache%\%own%\runtime.obj" "%kit%runtime.c" >nul 2>&1
if errorlevel 1 set "made="
exit /b

:make_object_with_cl
"%compiler%" %options% /w /Od /c /Fo"%cache%\%own%\runtime.obj" /Tc"%kit%runtime.c" >nul 2>&1
if errorlevel 1 set "made="
exit /b

rem ---- Compiling

rem -xc: the suffix of the C file is the user's choice. gcov's notes and counts go beside it; the runtime has none.
:compile_with_gcc
:compile_with_clang
"%compiler%" %options%%hidden% %coverage% -I "%beside%" -o "%output%" -xc "%source%" -xnone "%runtime%" %LDFLAGS%
exit /b %errorlevel%

rem cl leaves its object files somewhere; a backslash in front of a closing quote must be doubled.
:compile_with_cl
set "objects=%TEMP%\tessaly-%RANDOM%-%RANDOM%"
mkdir "%objects%"
if defined LDFLAGS set LDFLAGS=/link %LDFLAGS%
"%compiler%" %options%%hidden% /I "%beside%" /Fe"%output%" /Fo"%objects%\\" /Tc"%source%" "%runtime%" %LDFLAGS%
set "result=%errorlevel%"
rmdir /s /q "%objects%"
exit /b %result%

rem cl prints the name of the file that it compiles. Where it prints nothing else, there is nothing to tell.
:forget_name
for %%n in ("%source%") do set "name=%%~nxn"
set "first="
set /p first=<"%log%"
if not defined first exit /b
if not "%first:"=%"=="%name%" exit /b
for /f "usebackq skip=1 delims=" %%l in ("%log%") do exit /b
copy /y nul "%log%" >nul 2>nul
exit /b

rem ---- What went wrong

:usage
set "status=64"
echo usage: compile.bat OUTPUT>&2
goto end

:source_name
set "status=64"
echo compile.bat: the output name is that of a source file: "%output%">&2
goto end

:not_a_file
set "status=64"
echo compile.bat: the output name is not that of a file: "%output%">&2
goto end

:log_name
set "status=64"
echo compile.bat: the output name is that of the log: "%output%">&2
goto end

:same_name
set "status=64"
echo compile.bat: the output name is the C file itself: "%source%">&2
goto end

:no_system
echo compile.bat: there is no folder "%system%">&2
goto failed

:no_setting
set "problem=the setting FCompFileName, the path of the C file, is missing in"
echo compile.bat: %problem% "%place%">&2
goto failed

:no_source
echo compile.bat: the C file does not exist: "%source%" (setting FCompFileName in "%place%")>&2
exit /b 1

:in_use
echo compile.bat: the old program cannot be replaced; is it still running? "%output%">&2
exit /b 1

:wrong_compiler
echo compile.bat: there is no C compiler: CC is set to "%CC%", which is not found. Install one, or correct CC.>&2
exit /b 127

:no_compiler
echo compile.bat: there is no C compiler: neither gcc nor clang is in the PATH, and there is no LLVM and>&2
echo no Visual Studio with a C compiler in the folder of programs. Install one of them (MinGW-w64 has gcc for>&2
echo Windows) and put its folder bin into the PATH, or set CC to the path of the compiler.>&2
exit /b 127

:failed
set "status=1"
if exist "%output%" del /f /q "%output%"

:end
if not "%status%"=="0" if not defined TESSALY_NO_PAUSE pause
exit /b %status%
