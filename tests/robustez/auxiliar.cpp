// Runs one entry point of the library on one file and prints what it answered on one line, so
// that a test can run it as a process of its own and measure its memory and time.
//
//   quorvvalida_robustez_auxiliar notas|fichas|web-notas|web-fichas ARQUIVO DIRETORIO
//   quorvvalida_robustez_auxiliar leitor-notas|leitor-fichas ARQUIVO
#include <cstdio>
#include <string>

#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"
#include "quorvvalida/validacao.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"

namespace {

// The text without blanks at its end.
std::string SemBrancosNoFim(std::string texto) {
  texto.erase(texto.find_last_not_of(' ') + 1);
  return texto;
}

template <typename Leitor>
void Le(const std::string& arquivo) {
  Leitor leitor;
  leitor.OpenStream(arquivo);
  std::printf("total=%d fim=%d linha=%d tr=%s descricao=%s\n", leitor.TotalRecords(),
              leitor.EndOfStream() ? 1 : 0, leitor.LINHA(), leitor.TR().c_str(),
              SemBrancosNoFim(leitor.Descricao()).c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "uso: %s TIPO ARQUIVO [DIRETORIO]\n", argv[0]);
    return 2;
  }
  const std::string tipo = argv[1];
  const std::string arquivo = argv[2];
  const std::string diretorio = argc > 3 ? argv[3] : "";
  std::string numero;
  if (tipo == "notas") {
    quorv::Validacao validacao;
    const int status = validacao.Valida_Dados(arquivo, numero, diretorio);
    std::printf("status=%d remessa=%s\n", status, numero.c_str());
  } else if (tipo == "fichas") {
    quorv::ValidacaoFichaCadastral validacao;
    const int status = validacao.Valida_Fichas(arquivo, numero, diretorio);
    std::printf("status=%d grave=%d remessa=%s\n", status, validacao.bTem_Erro_Grave ? 1 : 0,
                numero.c_str());
  } else if (tipo == "web-notas" || tipo == "web-fichas") {
    quorv::ValidacaoTarnWEB web;
    const bool resposta =
        tipo == "web-notas"
            ? web.Valida_Dados_Tarnweb(arquivo, "/RETORNO.TXT", diretorio, numero)
            : web.Valida_Dados_Ficha_Cadastral(arquivo, "/RETORNO.TXT", diretorio, numero);
    std::printf("resposta=%d remessa=%s\n", resposta ? 1 : 0, numero.c_str());
  } else if (tipo == "leitor-notas") {
    Le<quorv::clsQuorvAdvBD>(arquivo);
  } else if (tipo == "leitor-fichas") {
    Le<quorv::clsQuorvAdvBDFichas>(arquivo);
  } else {
    std::fprintf(stderr, "tipo desconhecido: %s\n", tipo.c_str());
    return 2;
  }
  return 0;
}
