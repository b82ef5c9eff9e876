@echo off
rem Remove o registro do componente QuorvValida que esta nesta pasta.
rem   desregistrar.cmd            o registro de todos os usuarios (como administrador)
rem   desregistrar.cmd usuario    o registro do usuario atual
setlocal
set "DLL=%~dp0QuorvValida.dll"
if /i "%~1"=="usuario" (
  regsvr32 /s /u /n /i:user "%DLL%"
) else (
  regsvr32 /s /u "%DLL%"
)
if errorlevel 1 (
  echo Nao foi possivel remover o registro de %DLL%.
  exit /b 1
)
echo Registro do QuorvValida removido: %DLL%
