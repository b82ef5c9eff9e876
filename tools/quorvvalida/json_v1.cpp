#include "json_v1.hpp"

#include <filesystem>
#include <fstream>
#include <utility>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "advertencias_arquivo.hpp"
#include "component/shared/cp1252.hpp"
#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"

namespace quorv::ferramenta::json_v1 {
namespace {

constexpr std::size_t kBuffer = std::size_t{64} * 1024;

// A JSON string of UTF-8 text; bytes that are not UTF-8 (a path of another encoding) become
// U+FFFD rather than an invalid document.
std::string Texto(std::string_view texto) {
  return nlohmann::json(texto).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// The text without the blanks that pad it to its width.
std::string_view Aparado(std::string_view texto) {
  const std::size_t fim = texto.find_last_not_of(' ');
  return fim == std::string_view::npos ? std::string_view() : texto.substr(0, fim + 1);
}

// The start of every object: "{"formato":1,"objeto":"kind"".
void Abre(Escritor& escritor, std::string_view objeto) {
  escritor.Escreve(fmt::format("{{\"formato\":{},\"objeto\":{}", kFormato, Texto(objeto)));
}

void Campo(Escritor& escritor, std::string_view nome, std::string_view valor) {
  escritor.Escreve(fmt::format(",{}:{}", Texto(nome), Texto(valor)));
}

void Campo(Escritor& escritor, std::string_view nome, long long valor) {
  escritor.Escreve(fmt::format(",{}:{}", Texto(nome), valor));
}

void Booleano(Escritor& escritor, std::string_view nome, bool valor) {
  escritor.Escreve(fmt::format(",{}:{}", Texto(nome), valor ? "true" : "false"));
}

void CampoErro(Escritor& escritor, const Erro& erro) {
  escritor.Escreve(fmt::format(",\"erro\":{{\"tipo\":{},\"mensagem\":{}}}", Texto(erro.tipo),
                               Texto(erro.mensagem)));
}

// A field whose value is a Windows-1252 file's text, read and written a block at a time so that
// a file of any size is never held in memory.
void TextoDoArquivo(Escritor& escritor, std::string_view nome, const std::string& caminho) {
  std::ifstream arquivo(std::filesystem::u8path(caminho), std::ios::binary);
  escritor.Escreve(fmt::format(",{}:\"", Texto(nome)));
  std::string bloco(kBuffer, '\0');
  while (arquivo && !escritor.Falhou()) {
    arquivo.read(bloco.data(), static_cast<std::streamsize>(bloco.size()));
    const auto lidos = static_cast<std::size_t>(arquivo.gcount());
    if (lidos == 0) break;
    // Each byte is a character of its own, so a block ends on a character's end; its JSON
    // string is written without the quotes.
    const std::string trecho = Texto(cp1252::ParaUtf8(std::string_view(bloco.data(), lidos)));
    escritor.Escreve(std::string_view(trecho).substr(1, trecho.size() - 2));
  }
  escritor.Escreve("\"");
}

bool Fecha(Escritor& escritor, int codigoSaida) {
  escritor.Escreve(fmt::format(",\"codigo_saida\":{}}}\n", codigoSaida));
  return escritor.Descarrega();
}

// Walks the reader as its callers do: use the current record, test the end, move on.
template <typename Leitor>
int32_t Lista(Escritor& escritor, const std::string& arquivo) {
  Leitor leitor;
  leitor.OpenStream(arquivo);
  int32_t lidos = 0;
  for (; lidos < leitor.TotalRecords(); ++lidos) {
    escritor.Escreve(fmt::format("{}{{\"linha\":{},\"tr\":{},\"nota\":{},\"descricao\":{}}}",
                                 lidos == 0 ? "" : ",", leitor.LINHA(), Texto(leitor.TR()),
                                 Texto(leitor.Nota()), Texto(Aparado(leitor.Descricao()))));
    if (escritor.Falhou() || leitor.EndOfStream()) {
      ++lidos;
      break;
    }
    leitor.MoveNext();
  }
  leitor.CloseStream();
  return lidos;
}

}  // namespace

Escritor::Escritor(std::ostream& saida)
    : Escritor([&saida](std::string_view bytes) {
        saida.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        saida.flush();
        return static_cast<bool>(saida);
      }) {}

Escritor::Escritor(std::function<bool(std::string_view)> escreve) : escreve_(std::move(escreve)) {
  buffer_.reserve(kBuffer);
}

Escritor::~Escritor() = default;

void Escritor::Escreve(std::string_view bytes) {
  if (falhou_) return;
  buffer_.append(bytes);
  if (buffer_.size() >= kBuffer) Descarrega();
}

bool Escritor::Descarrega() {
  if (!falhou_ && !buffer_.empty() && !escreve_(buffer_)) falhou_ = true;
  buffer_.clear();
  return !falhou_;
}

bool EscreveValidacao(Escritor& escritor, const ResultadoValidacao& resultado) {
  Abre(escritor, "validacao");
  Campo(escritor, "arquivo", resultado.arquivo);
  Campo(escritor, "tipo", NomeDoTipo(resultado.tipo));
  Campo(escritor, "status", resultado.status);
  Campo(escritor, "significado", SignificadoDoStatus(resultado.tipo, resultado.status));
  Booleano(escritor, "aceito", resultado.codigoSaida == 0);
  Campo(escritor, "numero_remessa", resultado.numeroRemessa);
  Campo(escritor, "diretorio", resultado.diretorio);
  if (!resultado.caminhoAdvertencias.empty()) {
    Campo(escritor, "arquivo_advertencias", resultado.caminhoAdvertencias);
  }
  escritor.Escreve(",\"advertencias\":[");
  std::uint64_t escritas = 0;
  if (!resultado.caminhoAdvertencias.empty()) {
    LeAdvertencias(resultado.caminhoAdvertencias, resultado.separador, resultado.tipo,
                   [&](const Advertencia& advertencia) {
                     // A code or a line number that is not a number (a blank line number) is 0,
                     // which names no warning and no line.
                     escritor.Escreve(fmt::format(
                         "{}{{\"codigo\":{},\"linha\":{},\"tr\":{},\"mensagem\":{}}}",
                         escritas++ == 0 ? "" : ",", advertencia.codigoNumero.value_or(0),
                         advertencia.linhaNumero.value_or(0), Texto(advertencia.tr),
                         Texto(advertencia.mensagem)));
                     // Once the output is lost, reading on would change nothing.
                     return !escritor.Falhou();
                   });
  }
  escritor.Escreve("]");
  Campo(escritor, "total_advertencias", static_cast<long long>(escritas));
  if (resultado.diagnostico) {
    escritor.Escreve(fmt::format(",\"diagnostico\":{{\"tipo\":{},\"mensagem\":{}}}",
                                 Texto(resultado.diagnostico->tipo),
                                 Texto(resultado.diagnostico->mensagem)));
  }
  if (resultado.erro) CampoErro(escritor, *resultado.erro);
  return Fecha(escritor, resultado.codigoSaida);
}

bool EscreveWeb(Escritor& escritor, const ResultadoWeb& resultado) {
  Abre(escritor, "web");
  Campo(escritor, "arquivo", resultado.arquivo);
  Campo(escritor, "tipo", resultado.tipo ? NomeDoTipo(*resultado.tipo) : "nenhum");
  Booleano(escritor, "resultado", resultado.resultado);
  Booleano(escritor, "aceito", resultado.codigoSaida == 0);
  Campo(escritor, "numero_remessa", resultado.numeroRemessa);
  Campo(escritor, "diretorio", resultado.diretorio);
  if (!resultado.arquivoRetorno.empty()) {
    Campo(escritor, "arquivo_retorno", resultado.arquivoRetorno);
    if (resultado.incluiTextoRetorno)
      TextoDoArquivo(escritor, "texto_retorno", resultado.arquivoRetorno);
  }
  if (resultado.erro) CampoErro(escritor, *resultado.erro);
  return Fecha(escritor, resultado.codigoSaida);
}

bool EscreveMensagem(Escritor& escritor, const ResultadoMensagem& resultado) {
  Abre(escritor, "mensagem");
  Campo(escritor, "tipo", NomeDoTipo(resultado.tipo));
  Campo(escritor, "codigo", resultado.codigo);
  Campo(escritor, "mensagem", resultado.mensagem);
  Booleano(escritor, "conhecido", resultado.conhecido);
  return Fecha(escritor, resultado.codigoSaida);
}

bool EscreveListaAdvertencias(Escritor& escritor, const std::string& arquivo, Tipo tipo,
                              int codigoSaida) {
  Abre(escritor, "advertencias");
  Campo(escritor, "arquivo", arquivo);
  Campo(escritor, "tipo", NomeDoTipo(tipo));
  escritor.Escreve(",\"advertencias\":[");
  const int32_t total = tipo == Tipo::kNotas ? Lista<clsQuorvAdvBD>(escritor, arquivo)
                                             : Lista<clsQuorvAdvBDFichas>(escritor, arquivo);
  escritor.Escreve("]");
  Campo(escritor, "total", total);
  return Fecha(escritor, codigoSaida);
}

bool EscreveErro(Escritor& escritor, const Erro& erro, int codigoSaida, std::string_view arquivo) {
  Abre(escritor, "erro");
  if (!arquivo.empty()) Campo(escritor, "arquivo", arquivo);
  CampoErro(escritor, erro);
  return Fecha(escritor, codigoSaida);
}

bool EscreveResumoLote(Escritor& escritor, const ResumoLote& resumo) {
  Abre(escritor, "lote");
  Campo(escritor, "arquivos", static_cast<long long>(resumo.arquivos));
  Campo(escritor, "aceitos", static_cast<long long>(resumo.aceitos));
  Campo(escritor, "com_advertencias", static_cast<long long>(resumo.comAdvertencias));
  Campo(escritor, "com_falha", static_cast<long long>(resumo.comFalha));
  Campo(escritor, "total_advertencias", static_cast<long long>(resumo.totalAdvertencias));
  return Fecha(escritor, resumo.codigoSaida);
}

bool EscreveVersao(Escritor& escritor, std::string_view versao) {
  Abre(escritor, "versao");
  Campo(escritor, "versao", versao);
  return Fecha(escritor, 0);
}

}  // namespace quorv::ferramenta::json_v1
