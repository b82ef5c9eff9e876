// The tool's JSON objects, format 1: what `quorvvalida --json` prints and what any other host of
// the tool (a service) answers. Every object is one line ended by "\n" and carries "formato": 1,
// "objeto" (its kind) and "codigo_saida"; a failure carries "erro": {"tipo", "mensagem"}. The
// JSON Schemas of the kinds are installed under share/quorvvalida/esquemas.
//
// Warnings are written one by one as they are read from their file, so that an object of
// millions of warnings is never held in memory.
#ifndef QUORVVALIDA_TOOLS_JSON_V1_HPP_
#define QUORVVALIDA_TOOLS_JSON_V1_HPP_

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "resultados.hpp"

namespace quorv::ferramenta::json_v1 {

inline constexpr int kFormato = 1;

// Where the objects go: an output stream, or a function that takes bytes and answers false when
// it could not take them. Bytes are gathered and handed on at the end of each object (and
// whenever 64 KiB have gathered). After a failure nothing more is handed on.
class Escritor {
 public:
  explicit Escritor(std::ostream& saida);
  explicit Escritor(std::function<bool(std::string_view)> escreve);
  Escritor(const Escritor&) = delete;
  Escritor& operator=(const Escritor&) = delete;
  ~Escritor();

  void Escreve(std::string_view bytes);
  // Hands on what has gathered; false when that or an earlier handing failed.
  bool Descarrega();
  bool Falhou() const { return falhou_; }

 private:
  std::function<bool(std::string_view)> escreve_;
  std::string buffer_;
  bool falhou_ = false;
};

// Each function writes one object and answers false when the writer failed.

// {"objeto":"validacao", "arquivo", "tipo", "status", "significado", "aceito", "numero_remessa",
//  "diretorio", "arquivo_advertencias"?, "advertencias":[{"codigo","linha","tr","mensagem"}],
//  "total_advertencias", "diagnostico"?, "erro"?}. The warnings are read from the file named
// by the result, with the run's separator.
bool EscreveValidacao(Escritor& escritor, const ResultadoValidacao& resultado);

// {"objeto":"web", "arquivo", "tipo" ("notas", "fichas" or "nenhum"), "resultado", "aceito",
//  "numero_remessa", "diretorio", "arquivo_retorno"?, "texto_retorno"?, "erro"?}. The return
// file's text is read from the file as it is written out, when the result asks for it.
bool EscreveWeb(Escritor& escritor, const ResultadoWeb& resultado);

// {"objeto":"mensagem", "tipo", "codigo", "mensagem", "conhecido"}.
bool EscreveMensagem(Escritor& escritor, const ResultadoMensagem& resultado);

// {"objeto":"advertencias", "arquivo", "tipo", "advertencias":[{"linha","tr","nota",
//  "descricao"}], "total"}: the warnings file walked with the library's reader of its kind, as
// the web facade reads it, its texts without the blanks that pad them.
bool EscreveListaAdvertencias(Escritor& escritor, const std::string& arquivo, Tipo tipo,
                              int codigoSaida);

// {"objeto":"erro", "arquivo"?, "erro":{"tipo","mensagem"}}: a command that failed before it
// had anything else to tell (a usage error, a file whose kind cannot be told, a file that is not
// what the command takes); `arquivo` names the file concerned, when there is one.
bool EscreveErro(Escritor& escritor, const Erro& erro, int codigoSaida,
                 std::string_view arquivo = {});

// {"objeto":"lote", "arquivos", "aceitos", "com_advertencias", "com_falha",
//  "total_advertencias"}: the last object of a batch, after one object per file.
bool EscreveResumoLote(Escritor& escritor, const ResumoLote& resumo);

// {"objeto":"versao", "versao"}.
bool EscreveVersao(Escritor& escritor, std::string_view versao);

}  // namespace quorv::ferramenta::json_v1

#endif  // QUORVVALIDA_TOOLS_JSON_V1_HPP_
