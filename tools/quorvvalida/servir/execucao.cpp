#include "execucao.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

#include "quorvvalida/quorvvalida.hpp"

namespace quorv::servico {
namespace {

Relogio RelogioDe(const Parametros& parametros) {
  if (!parametros.hoje) return {};
  const double hoje = *parametros.hoje;
  return [hoje] { return hoje; };
}

bool Existe(const std::string& caminho) {
  std::error_code erro;
  return std::filesystem::is_regular_file(caminho, erro);
}

}  // namespace

std::uint64_t ContaLinhas(const std::string& caminho) {
  const int descritor = ::open(caminho.c_str(), O_RDONLY | O_CLOEXEC);
  if (descritor < 0) return 0;
  std::vector<char> bloco(1 << 20);
  std::uint64_t linhas = 0;
  char ultimo = '\n';
  for (;;) {
    const ssize_t lidos = ::read(descritor, bloco.data(), bloco.size());
    if (lidos <= 0) break;
    const char* const fim = bloco.data() + lidos;
    for (const char* p = bloco.data();
         (p = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(fim - p)))) !=
         nullptr;
         ++p) {
      ++linhas;
    }
    ultimo = fim[-1];
  }
  ::close(descritor);
  return linhas + (ultimo != '\n' ? 1 : 0);
}

ResultadoValidacao Valida(ferramenta::Tipo tipo, const std::string& arquivo,
                          const std::string& diretorio, const Parametros& parametros) {
  ResultadoValidacao resultado;
  resultado.tipo = tipo;
  if (tipo == ferramenta::Tipo::kNotas) {
    Validacao validacao;
    validacao.Hoje = RelogioDe(parametros);
    resultado.status =
        validacao.Valida_Dados(arquivo, resultado.numeroRemessa, diretorio, parametros.chaveRemessa,
                               parametros.chaveProcessamento, parametros.origem,
                               parametros.servidor, parametros.separador);
  } else {
    ValidacaoFichaCadastral validacao;
    validacao.Hoje = RelogioDe(parametros);
    resultado.status =
        validacao.Valida_Fichas(arquivo, resultado.numeroRemessa, diretorio,
                                parametros.chaveRemessa, parametros.chaveProcessamento,
                                parametros.origem, parametros.servidor, parametros.separador);
  }
  const std::string advertencias = diretorio + "/ADVERTENCIAS.TXT";
  resultado.temAdvertencias = Existe(advertencias);
  if (resultado.temAdvertencias) resultado.advertencias = ContaLinhas(advertencias);
  return resultado;
}

ResultadoWeb ValidaWeb(std::optional<ferramenta::Tipo> tipo,
                       const std::optional<std::string>& tipoDoc, const std::string& arquivo,
                       const std::string& diretorio, const std::string& nomeRetorno,
                       const Parametros& parametros) {
  ValidacaoTarnWEB web;
  web.Hoje = RelogioDe(parametros);
  if (parametros.tipoArquivo) web.TipoArquivo(*parametros.tipoArquivo);
  if (parametros.programaChamador) web.ProgramaChamador(*parametros.programaChamador);
  ResultadoWeb resultado;
  // The facade glues the directory and the return file's name as they are.
  const std::string nome = "/" + nomeRetorno;
  if (tipoDoc) {
    if (*tipoDoc == "P") resultado.tipo = ferramenta::Tipo::kNotas;
    if (*tipoDoc == "F") resultado.tipo = ferramenta::Tipo::kFichas;
    resultado.resultado =
        web.Valida_TIPO(arquivo, nome, diretorio, resultado.numeroRemessa, *tipoDoc);
  } else if (tipo == ferramenta::Tipo::kNotas) {
    resultado.tipo = tipo;
    resultado.resultado =
        web.Valida_Dados_Tarnweb(arquivo, nome, diretorio, resultado.numeroRemessa);
  } else {
    resultado.tipo = tipo;
    resultado.resultado =
        web.Valida_Dados_Ficha_Cadastral(arquivo, nome, diretorio, resultado.numeroRemessa);
  }
  resultado.escreveuRetorno = !resultado.resultado && Existe(diretorio + nome);
  return resultado;
}

}  // namespace quorv::servico
