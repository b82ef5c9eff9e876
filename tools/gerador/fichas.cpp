// Registration-form files: a header, requests with every record type, and the trailer.
#include "linhas.hpp"

namespace quorv::gerador {
namespace {

constexpr std::string_view kInicioAtividade = "20200101";

// A person record (holder, participant, legal representative or owner) and its name record,
// which repeats the person's identification.
void Pessoa(Linhas& linhas, std::string_view tipo, std::string_view tipoNome,
            const std::string& solicitacao, std::uint64_t codigo, bool juridica) {
  linhas.Novo(tipo)
      .Campo(12, 10, solicitacao)
      .Campo(22, 8, Zeros(codigo, 8))
      .Campo(30, 8, Zeros(codigo, 8))
      .Campo(38, 1, juridica ? "J" : "F")
      .Campo(39, 11, juridica ? "" : "11144477735")
      .Campo(50, 14, juridica ? "11222333000181" : "")
      .Campo(64, 46, "PESSOA DO ESTABELECIMENTO")
      .Campo(227, 8, "00000000");
  linhas.Grava();
  if (tipoNome.empty()) return;
  linhas.Novo(tipoNome)
      .Campo(12, 10, solicitacao)
      .Campo(22, 8, Zeros(codigo, 8))
      .Campo(30, 8, Zeros(codigo, 8))
      .Campo(38, 1, juridica ? "J" : "F")
      .Campo(39, 11, juridica ? "" : "11144477735")
      .Campo(50, 14, juridica ? "11222333000181" : "")
      .Campo(64, 46, "NOME COMPLETO DA PESSOA");
  linhas.Grava();
}

void Abertura(Linhas& linhas, const std::string& solicitacao) {
  linhas.Novo("100").Campo(12, 10, solicitacao).Campo(22, 1, "1");
  linhas.Grava();
  linhas.Novo("110")
      .Campo(12, 10, solicitacao)
      .Campo(42, 8, kInicioAtividade)
      .Campo(50, 8, "00000000")
      .Campo(136, 7, "0000100")
      .Campo(143, 2, "01")
      .Campo(145, 2, "01")
      .Campo(147, 2, "01");
  linhas.Grava();
}

// A request with every record type, each of them right.
void SolicitacaoValida(Linhas& linhas, std::uint64_t numero) {
  const std::string solicitacao = Zeros(numero, 10);
  Abertura(linhas, solicitacao);
  linhas.Novo("111")
      .Campo(12, 10, solicitacao)
      .Campo(22, 2, "01")
      .Campo(24, 8, kInicioAtividade)
      .Campo(32, 8, "00000000");
  linhas.Grava();
  linhas.Novo("115")
      .Campo(12, 10, solicitacao)
      .Campo(22, 7, "0111301")
      .Campo(29, 8, kInicioAtividade)
      .Campo(37, 8, "00000000")
      .Campo(45, 1, "1");
  linhas.Grava();
  Pessoa(linhas, "120", "121", solicitacao, numero, false);
  Pessoa(linhas, "125", "126", solicitacao, numero + 1, true);
  Pessoa(linhas, "130", "131", solicitacao, numero + 2, false);
  linhas.Novo("140")
      .Campo(12, 10, solicitacao)
      .Campo(22, 3, "123")
      .Campo(25, 1, "1")
      .Campo(26, 8, Zeros(numero, 8))
      .Campo(34, 7, "0000100")
      .Campo(41, 2, "01")
      .Campo(43, 7, "0000080")
      .Campo(50, 8, kInicioAtividade)
      .Campo(58, 8, "00000000");
  linhas.Grava();
  Pessoa(linhas, "145", "146", solicitacao, numero + 3, false);
  for (std::string_view tipo : {"196", "197", "199"}) {
    linhas.Novo(tipo).Campo(12, 10, solicitacao);
    linhas.Grava();
  }
}

// A request whose category, activity, holder's name and property are wrong in every field;
// the request is then rejected at its closing.
void SolicitacaoComDefeitos(Linhas& linhas, std::uint64_t numero) {
  const std::string solicitacao = Zeros(numero, 10);
  const std::string outra = Zeros(numero + 500000, 10);
  Abertura(linhas, solicitacao);
  linhas.Novo("111").Campo(12, 10, outra).Campo(22, 2, "00").Campo(24, 8, "00000000");
  linhas.Grava();
  linhas.Novo("115")
      .Campo(12, 10, outra)
      .Campo(22, 7, "0000000")
      .Campo(29, 8, "00000000")
      .Campo(45, 1, "9");
  linhas.Grava();
  Pessoa(linhas, "120", "", solicitacao, numero, false);
  linhas.Novo("121")
      .Campo(12, 10, outra)
      .Campo(22, 8, "ABC")
      .Campo(30, 8, "99999999")
      .Campo(38, 1, "f")
      .Campo(39, 11, "22222222222")
      .Campo(50, 14, "11222333000181");
  linhas.Grava();
  linhas.Novo("140")
      .Campo(12, 10, outra)
      .Campo(22, 3, "501")
      .Campo(25, 1, "0")
      .Campo(26, 8, "00000000")
      .Campo(34, 7, "0000000")
      .Campo(43, 7, "0000000")
      .Campo(50, 8, "00000000");
  linhas.Grava();
  linhas.Novo("199").Campo(12, 10, solicitacao);
  linhas.Grava();
}

}  // namespace

void GeraFichas(std::FILE* saida, std::uint64_t quantas, bool defeitos) {
  Linhas linhas(saida, 260, 3);
  linhas.Novo("001")
      .Campo(33, 3, "123")
      .Campo(36, 25, "MUNICIPIO DE EXEMPLO")
      .Campo(61, 6, "000001")
      .Campo(67, 8, "20240215")
      .Campo(75, 10, "1.0");
  linhas.Grava();
  // A clean request takes 16 lines, a faulty one 8.
  const std::uint64_t porSolicitacao = defeitos ? 8 : 16;
  std::uint64_t numero = 0;
  while (linhas.Escritas() + porSolicitacao + 1 <= quantas || numero == 0) {
    numero += 10;
    if (defeitos) {
      SolicitacaoComDefeitos(linhas, numero);
    } else {
      SolicitacaoValida(linhas, numero);
    }
  }
  linhas.Novo("999");
  linhas.Grava();
}

}  // namespace quorv::gerador
