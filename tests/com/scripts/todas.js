// Every class through JScript, which passes every argument by value (it has no ByRef) and numbers
// as it holds them: the component's ByRef parameters take those values too. Arguments: the clean
// invoice file, the faulty form file, a working folder, the registered DLL. Ends with FIM and the
// failure count.
var fso = new ActiveXObject("Scripting.FileSystemObject");
var falhas = 0;

function confere(descricao, obtido, esperado) {
  if (typeof obtido !== typeof esperado || obtido !== esperado) {
    falhas++;
    WScript.Echo("FALHA: " + descricao + ": [" + obtido + "] (" + typeof obtido +
                 "), esperado [" + esperado + "] (" + typeof esperado + ")");
  }
}

// The HRESULT a call raised, in hexadecimal; "0" when none. JScript reports the dispatch errors
// as they are (DISP_E_TYPEMISMATCH 80020005) and the run time's as 800Axxxx.
function erroDe(chamada) {
  try {
    chamada();
  } catch (e) {
    return (e.number >>> 0).toString(16).toUpperCase();
  }
  return "0";
}

var notas = WScript.Arguments(0);
var fichas = WScript.Arguments(1);
var trabalho = WScript.Arguments(2);

// The DLL's version resource, as Windows shows it in the file's properties.
confere("versao da DLL", fso.GetFileVersion(WScript.Arguments(3)), "1.1.0.1");

var v = new ActiveXObject("QuorvValida.Validacao");
confere("Valida_Dados com os opcionais omitidos", v.Valida_Dados(notas, "", trabalho), 0);
confere("Valida_Dados com todos", v.Valida_Dados(notas, "", trabalho, 1, 2.5, "", "", "#"), 0);
confere("Valida_Dados nome em minusculas", v.valida_dados(notas, "", trabalho), 0);
confere("Valida_Dados chave invalida", erroDe(function () { v.Valida_Dados(notas, "", trabalho, "x"); }), "80020005");
confere("Gravar_Erro fora da validacao", v.Gravar_Erro(77), false);

var f = new ActiveXObject("QuorvValida.ValidacaoFichaCadastral");
f.iOrdem_Faturamento = 12;
confere("iOrdem_Faturamento", f.iOrdem_Faturamento, 12);
f.bTem_Erro_Grave = true;
confere("bTem_Erro_Grave", f.bTem_Erro_Grave, true);
f.sTipo_Solicitacao = 7;
confere("sTipo_Solicitacao de numero", f.sTipo_Solicitacao, "7");
confere("Valida_Fichas", f.Valida_Fichas(fichas, "", trabalho), 8);
confere("numero da remessa", f.sNumeroRemessaRef, "000001");
confere("bTem_Erro_Grave depois da validacao", f.bTem_Erro_Grave, false);
confere("Procedimentos_Finais_Fichas", f.Procedimentos_Finais_Fichas(trabalho), false);
confere("Gravar_Erro_Ficha", f.Gravar_Erro_Ficha(5, 0), false);
confere("Gravar_Erro_FichaTR110", f.Gravar_Erro_FichaTR110(5), false);

var r = new ActiveXObject("QuorvValida.clsQuorvAdvBDFichas");
r.OpenStream(trabalho + "\\ADVERTENCIAS.TXT");
var total = r.TotalRecords, lidos = 0;
confere("ha advertencias", total > 0, true);
for (;;) {
  lidos++;
  if (r.EndOfStream) break;
  r.MoveNext();
}
r.CloseStream();
confere("leitura completa", lidos, total);
confere("RecordCount sem arquivo", erroDe(function () { return r.RecordCount; }), "800A005B");

var w = new ActiveXObject("QuorvValida.ValidacaoTarnWEB");
w.ProgramaChamador = "SISTEMA";
w.TipoArquivo = "REM";
confere("Valida_TIPO F", w.Valida_TIPO(fichas, "\\RETORNO.TXT", trabalho, "", "F"), false);
confere("retorno escrito", fso.FileExists(trabalho + "\\RETORNO.TXT"), true);
confere("Valida_Dados_Ficha_Cadastral", w.Valida_Dados_Ficha_Cadastral(fichas, "\\RETORNO.TXT", trabalho, ""), false);
confere("Valida_Dados_Tarnweb", w.Valida_Dados_Tarnweb(notas, "\\RETORNO.TXT", trabalho, ""), true);
confere("BreakString", w.BreakString("aa bbbb cccc", 2, 8), "cccc");
confere("BreakString sem espaco", w.BreakString("abcdefghij", 1, 5), "");
confere("TipoArquivo nao se le", erroDe(function () { return w.TipoArquivo; }), "80020003");

var u = new ActiveXObject("QuorvValida.FileUtility");
confere("GetDrive", u.GetDrive("C:\\dir\\file.txt"), "C:");
confere("GetFileName", u.GetFileName("C:\\dir\\file.txt", true), "file.txt");
confere("GetFileName sem flag", u.GetFileName("C:\\dir\\file.txt"), "file");
confere("GetFileExtension", u.GetFileExtension("a.tar.gz"), "gz");
confere("GetPath", u.GetPath("C:\\dir\\sub\\file.txt", true), "C:\\dir\\sub");
confere("FileExists", u.FileExists(notas), true);

var m = new ActiveXObject("QuorvValida.clsQuorvMsg");
var mf = new ActiveXObject("QuorvValida.clsQuorvMsgFichas");
confere("MensagemAdvertencia", m.MensagemAdvertencia(77), "Linha com tamanho Incorreto");
confere("MensagemAdvertenciaFichas de 999", mf.MensagemAdvertenciaFichas(999), "");
confere("codigo fora da faixa", erroDe(function () { m.MensagemAdvertencia(1e6); }), "8002000A");

confere("clsQuorvAdvBD", erroDe(function () { new ActiveXObject("QuorvValida.clsQuorvAdvBD"); }), "800A01AD");

WScript.Echo(falhas + " falhas");
WScript.Echo("FIM");
WScript.Quit(falhas);
