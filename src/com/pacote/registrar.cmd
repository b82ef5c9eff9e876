@echo off
rem Registra o componente QuorvValida que esta nesta pasta.
rem   registrar.cmd            para todos os usuarios (execute como administrador)
rem   registrar.cmd usuario    so para o usuario atual, sem administrador
setlocal
set "DLL=%~dp0QuorvValida.dll"
if /i "%~1"=="usuario" (
  regsvr32 /s /n /i:user "%DLL%"
) else (
  regsvr32 /s "%DLL%"
)
if errorlevel 1 (
  echo Nao foi possivel registrar %DLL%.
  exit /b 1
)
echo QuorvValida registrado: %DLL%
