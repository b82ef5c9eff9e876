#include "web/retorno.hpp"

#include <iterator>

#include <filesystem>
#include <system_error>

#include "component/files/arquivo_saida.hpp"
#include "component/files/caminhos.hpp"
#include "component/shared/cp1252.hpp"
#include "component/shared/texto.hpp"
#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"
#include "web/partir_texto.hpp"

namespace quorv::web {
namespace {

constexpr std::string_view kFimDeLinha = "\r\n";
constexpr std::string_view kTracos =
    "---------------------------------------------------------------------";
constexpr std::string_view kMascaraLinha = "@@@@@";
// Warning texts up to this many characters stand whole on their line; longer ones are cut
// into pieces of this width, at most three.
constexpr int kLarguraTexto = 33;
// From this many characters on, a text gets its third piece.
constexpr std::size_t kTerceiroPedaco = 67;
// The identification of a warning on any other record: blanks.
constexpr std::size_t kSemIdentificacao = 27;

// What tells the two kinds of return file apart. Texts are UTF-8.
struct Layout {
  // The heading, line by line; the remessa number follows the line at indiceNumero.
  const std::string_view* cabecalho;
  std::size_t linhasCabecalho;
  std::size_t indiceNumero;
  // The record type whose warnings show the identification, laid into its mask.
  std::string_view trIdentificado;
  std::string_view mascaraIdentificacao;
  // Between the line number and the text.
  std::string_view intervalo;
  // The blanks before the second and third pieces of a long text.
  std::size_t recuo;
};

constexpr std::string_view kCabecalhoNotas[] = {
    "SECRETARIA DA FAZENDA - ESTADO DO VALDORIA",
    "Informamos abaixo o resultado da validação do arquivo de Notas",
    "Fiscais de Produtor: ",
    "Inconsistencias encontradas:",
    kTracos,
    "TR          NOTA              LINHA DESCRIÇÃO DA INCONSISTENCIA",
    "   --------------------------",
    "   Inscrição   T Série Número",
    kTracos};

constexpr std::string_view kCabecalhoFichas[] = {
    "SECRETARIA DA FAZENDA - ESTADO DO VALDORIA",
    "Informamos abaixo o resultado da validação do arquivo de Ficha",
    "Cadastral de número: ",
    "Inconsistencias encontradas:",
    kTracos,
    "TR  Solicitação                LINHA  DESCRIÇÃO DA INCONSISTENCIA",
    kTracos};

// An invoice's number area holds the issuer's inscription (3/7), the note type, the series and
// the number. Its mask is one character shorter than the blanks of the other records, so the
// line number of a note stands one column to the left; the web system reads it so.
constexpr Layout kLayoutNotas{
    kCabecalhoNotas, std::size(kCabecalhoNotas), 2, "10", "@@@/@@@@@@@ @ @@@   @@@@@@", " ", 36};

constexpr Layout kLayoutFichas{kCabecalhoFichas,
                               std::size(kCabecalhoFichas),
                               2,
                               "110",
                               "@@@@@@@@@@                 ",
                               "  ",
                               37};

const Layout& LayoutDe(TipoRetorno tipo) {
  return tipo == TipoRetorno::kNotas ? kLayoutNotas : kLayoutFichas;
}

// The value laid into the "@" positions of the mask from the right; positions left over on the
// left become blanks and every other character of the mask stays. Characters the positions
// cannot hold are kept in front, so that nothing of the value is lost.
std::string Mascara(std::string_view valor, std::string_view mascara) {
  std::string resultado(mascara);
  std::size_t restantes = valor.size();
  for (std::size_t i = resultado.size(); i-- > 0;) {
    if (resultado[i] != '@') continue;
    resultado[i] = restantes > 0 ? valor[--restantes] : ' ';
  }
  return std::string(valor.substr(0, restantes)) + resultado;
}

void AcrescentaLinha(std::string& saida, std::string_view utf8) {
  saida += cp1252::DeUtf8(utf8);
  saida += kFimDeLinha;
}

template <typename Leitor>
Falha Grava(TipoRetorno tipo, const std::string& caminhoAdvertencias,
            const std::string& caminhoRetorno, std::string_view numeroRemessa) {
  const Layout& layout = LayoutDe(tipo);
  Leitor leitor;
  leitor.OpenStream(caminhoAdvertencias);
  ArquivoSaida saida;
  if (!saida.Criar(caminhoRetorno)) return Falha::RetornoNaoCriado;

  std::string cabecalho;
  for (std::size_t i = 0; i < layout.linhasCabecalho; ++i) {
    cabecalho += cp1252::DeUtf8(layout.cabecalho[i]);
    if (i == layout.indiceNumero) cabecalho += cp1252::DeUtf8(numeroRemessa);
    cabecalho += kFimDeLinha;
  }
  saida.Escreve(cabecalho);
  // The current record is written before the end is asked for: the first warning is current
  // right after opening, and a reader of an empty file still gives one entry of blank items.
  for (;;) {
    saida.Escreve(
        LinhasDoAviso(tipo, leitor.TR(), leitor.Nota(), leitor.LINHA(), leitor.Descricao()));
    if (leitor.EndOfStream()) break;
    leitor.MoveNext();
  }
  leitor.CloseStream();
  saida.Fechar();
  return saida.Falhou() ? Falha::EscritaRetorno : Falha::Nenhuma;
}

}  // namespace

bool GravaRetorno(TipoRetorno tipo, const std::string& caminhoAdvertencias,
                  const std::string& caminhoRetorno, std::string_view numeroRemessa, Falha* falha) {
  const Falha resultado =
      tipo == TipoRetorno::kNotas
          ? Grava<clsQuorvAdvBD>(tipo, caminhoAdvertencias, caminhoRetorno, numeroRemessa)
          : Grava<clsQuorvAdvBDFichas>(tipo, caminhoAdvertencias, caminhoRetorno, numeroRemessa);
  if (falha != nullptr) *falha = resultado;
  return resultado != Falha::RetornoNaoCriado;
}

bool Relata(TipoRetorno tipo, const std::string& diretorio, const std::string& nomeRetorno,
            std::string_view numeroRemessa, Falha* falha) {
  if (falha != nullptr) *falha = Falha::Nenhuma;
  const std::string advertencias = caminhos::Advertencias(diretorio);
  std::error_code erro;
  if (!std::filesystem::is_regular_file(caminhos::Caminho(advertencias), erro)) return true;
  // A return file that cannot be created or written whole does not change the answer, which is
  // false all the same, and the warnings file goes; the failure is told to the host apart.
  GravaRetorno(tipo, advertencias, diretorio + nomeRetorno, numeroRemessa, falha);
  caminhos::Apaga(advertencias);
  return false;
}

bool Conclui(TipoRetorno tipo, const std::string& diretorio, const std::string& nomeRetorno,
             std::string_view numeroRemessa, Falha& falha) {
  if (falha == Falha::EntradaEhAdvertencias) return false;
  Falha retorno = Falha::Nenhuma;
  const bool resultado = Relata(tipo, diretorio, nomeRetorno, numeroRemessa, &retorno);
  if (falha == Falha::Nenhuma) falha = retorno;
  return resultado;
}

namespace {

bool MesmoLugar(const std::string& a, const std::string& b) {
  if (caminhos::MesmoArquivo(a, b)) return true;
  // A file that does not exist yet is compared by where its path leads.
  std::error_code erro;
  const std::filesystem::path resolvidoA =
      std::filesystem::weakly_canonical(caminhos::Caminho(a), erro);
  if (erro) return false;
  const std::filesystem::path resolvidoB =
      std::filesystem::weakly_canonical(caminhos::Caminho(b), erro);
  return !erro && resolvidoA == resolvidoB;
}

}  // namespace

bool RetornoColide(const std::string& arquivo, const std::string& diretorio,
                   const std::string& nomeRetorno) {
  const std::string retorno = diretorio + nomeRetorno;
  return MesmoLugar(retorno, arquivo) || MesmoLugar(retorno, caminhos::Advertencias(diretorio));
}

std::string LinhasDoAviso(TipoRetorno tipo, std::string_view tr, std::string_view nota,
                          int32_t linha, std::string_view descricao) {
  const Layout& layout = LayoutDe(tipo);
  const std::string tipoRegistro = cp1252::DeUtf8(tr);
  std::string saida = tipoRegistro + " ";
  if (tipoRegistro == layout.trIdentificado) {
    saida += Mascara(cp1252::DeUtf8(nota), layout.mascaraIdentificacao);
  } else {
    saida.append(kSemIdentificacao, ' ');
  }
  saida += Mascara(std::to_string(linha), kMascaraLinha);
  saida += layout.intervalo;

  // A short text goes as the reader gives it, with the blanks that fill it to its width.
  const std::string texto = cp1252::DeUtf8(descricao);
  const std::size_t tamanho = texto::Apara(texto).size();
  if (tamanho <= static_cast<std::size_t>(kLarguraTexto)) {
    saida += texto;
    saida += kFimDeLinha;
    return saida;
  }
  AcrescentaLinha(saida, PedacoDoTexto(descricao, 1, kLarguraTexto));
  const std::string recuo(layout.recuo, ' ');
  saida += recuo;
  AcrescentaLinha(saida, PedacoDoTexto(descricao, 2, kLarguraTexto));
  // Nothing past the third piece is written.
  if (tamanho >= kTerceiroPedaco) {
    saida += recuo;
    AcrescentaLinha(saida, PedacoDoTexto(descricao, 3, kLarguraTexto));
  }
  return saida;
}

}  // namespace quorv::web
