#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcError.h"

/// What a parsed expression consists of: the items that TCalc (vrnCalc.h) keeps in its list, and the
/// keywords and functions that applications register.
///
/// An application meets these classes in three places: a function's callback receives its parameters as
/// TFunctionParams, GetKeywordsUsed lists TKeyword objects, and TCalc::GetItems shows how an expression was
/// cut.
///
///     Extended Range(const TFunction&, const TFunctionParams& params) {
///         return params.Get_Calc(1).Calculate() - params.Get_Calc(0).Calculate();
///     }
///
/// Items, keywords and functions are made by TCalc alone, belong to it and die with it.
/// Threads: as TCalc, one thread at a time.
namespace Varnholt {

class TCalc;
class TFunction;
class TFunctionParams;

/// The application's answer to a keyword: the evaluator on which the keyword was registered, the keyword's
/// name without its dollar sign, and the pointer given at registration. An exception passes through
/// Calculate.
using TKeywordEvent = std::function<Extended(TCalc& calc, const String& keyword, void* param)>;

/// The application's answer to a function call. The parameters come as evaluators: the callback decides
/// which of them it calculates, and how often. An exception passes through Calculate.
using TFunctionEvent = std::function<Extended(const TFunction& function, const TFunctionParams& params)>;

/// An ordered list of evaluators; it does not own them.
using TCalcList = std::vector<TCalc*>;

/// What an object of the family is, for walks over the items of an expression.
enum class TCalcKind : std::uint8_t { Calc, Keyword, Num, Brackets, KeywordNum, FunctionNum, Operator };

/// A piece of a cleaned expression. The pieces of one expression share its text.
struct TCalcText {
    std::shared_ptr<const String> Whole;
    std::size_t First = 0;  // 0-based position in Whole
    std::size_t Length = 0;

    [[nodiscard]] StringView View() const {
        return Whole ? StringView(*Whole).substr(First, Length) : StringView();
    }
};

/// Base of the family.
class VARNHOLT_EXPORT TCalcObj {
public:
    virtual ~TCalcObj();
    TCalcObj(const TCalcObj&) = delete;
    TCalcObj& operator=(const TCalcObj&) = delete;

    /// The evaluator that owns the object; for an evaluator its parent, or none.
    [[nodiscard]] TCalc* GetCalc() const noexcept { return FCalc; }
    [[nodiscard]] TCalcKind GetKind() const noexcept { return FKind; }

protected:
    TCalcObj(TCalc* calc, TCalcKind kind) noexcept : FCalc(calc), FKind(kind) {}

private:
    friend class TCalc;
    friend class TCalcParser;

    /// Hands the items of owned evaluators over, so that a deep expression is freed without deep recursion.
    virtual void SurrenderItems(std::vector<std::unique_ptr<TCalcObj>>& heirs);

    TCalc* FCalc;
    TCalcKind FKind;
    bool FOwnedByItem = false;  // an evaluator that a group or a function call owns
};

/// A registered keyword: a name whose value the application supplies at each calculation.
class VARNHOLT_EXPORT TKeyword final : public TCalcObj {
public:
    TKeyword(TCalc& calc, StringView keyword, void* param, TKeywordEvent event);

    /// The name without the dollar sign.
    [[nodiscard]] const String& GetKeyword() const noexcept { return FKeyword; }
    /// The pointer given at registration, or none.
    [[nodiscard]] void* GetParam() const noexcept { return FParam; }
    /// Asks the application for the value.
    [[nodiscard]] Extended Number() const;

private:
    friend class TCalcProgram;
    friend class TKeywordNum;

    /// Number, inside a calculation of the evaluator's tree.
    [[nodiscard]] Extended Ask() const { return FEvent(*GetCalc(), FKeyword, FParam); }

    String FKeyword;
    void* FParam;
    TKeywordEvent FEvent;
};

/// The functions that every evaluator knows; fuNone marks a function that an application registered.
enum TBuiltIn : std::uint8_t { fuNone, fuSum, fuMin, fuMax, fuAvg, fuMedian, fuStDev, fuSqrt };

/// A function that expressions call by its name.
class VARNHOLT_EXPORT TFunction final {
public:
    /// No limit on the number of parameters, on that side.
    static constexpr int kNoLimit = -1;

    TFunction(StringView name, int minParams, int maxParams, TFunctionEvent event, TBuiltIn builtIn = fuNone);

    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    [[nodiscard]] int GetMinParams() const noexcept { return FMinParams; }
    [[nodiscard]] int GetMaxParams() const noexcept { return FMaxParams; }
    [[nodiscard]] TBuiltIn GetBuiltIn() const noexcept { return FBuiltIn; }

    /// Whether a call may have so many parameters.
    [[nodiscard]] bool Accepts(std::size_t count) const noexcept;
    /// Calls the function. Raises ceParam if it does not accept the number of parameters or if one is empty.
    [[nodiscard]] Extended Execute(const TCalcList& params) const;

private:
    int FMinParams;
    int FMaxParams;
    String FName;
    TFunctionEvent FEvent;
    TBuiltIn FBuiltIn;
};

/// The parameters of one call, a view that lives as long as the call.
class VARNHOLT_EXPORT TFunctionParams final {
public:
    explicit TFunctionParams(const TCalcList& list) noexcept : FList(list) {}

    [[nodiscard]] int Get_Count() const noexcept { return static_cast<int>(FList.size()); }
    /// The evaluator of a parameter, by 0-based index; its Calculate gives the value.
    /// Raises EListError for an index outside.
    [[nodiscard]] TCalc& Get_Calc(int index) const;

private:
    const TCalcList& FList;
};

/// An operand.
class VARNHOLT_EXPORT TBaseNum : public TCalcObj {
public:
    [[nodiscard]] virtual Extended Get_Number() const = 0;

protected:
    using TCalcObj::TCalcObj;
};

/// A number.
class VARNHOLT_EXPORT TNum final : public TBaseNum {
public:
    /// Reads a token. A leading lower-case "n" before further characters stands for a minus; the rest is
    /// StrToFloat's, with the decimal separator in force. Raises EConvertError for anything else.
    TNum(TCalc& calc, StringView text);
    TNum(TCalc& calc, Extended value) noexcept : TBaseNum(&calc, TCalcKind::Num), FNum(value) {}

    [[nodiscard]] Extended Get_Number() const override { return FNum; }

private:
    Extended FNum;
};

/// A group in brackets: an expression of its own, whose parent is the evaluator of the group.
class VARNHOLT_EXPORT TBrackets final : public TBaseNum {
public:
    TBrackets(TCalc& calc, std::unique_ptr<TCalc> newCalc) noexcept;
    ~TBrackets() override;

    [[nodiscard]] TCalc& GetNewCalc() const noexcept { return *FNewCalc; }
    [[nodiscard]] Extended Get_Number() const override;

private:
    void SurrenderItems(std::vector<std::unique_ptr<TCalcObj>>& heirs) override;

    std::unique_ptr<TCalc> FNewCalc;
};

/// A keyword in an expression. It keeps the name alone: the keyword is looked up at each calculation.
class VARNHOLT_EXPORT TKeywordNum final : public TBaseNum {
public:
    TKeywordNum(TCalc& calc, StringView keyword)
        : TBaseNum(&calc, TCalcKind::KeywordNum), FKeyword(keyword) {}

    [[nodiscard]] const String& GetKeyword() const noexcept { return FKeyword; }
    /// The registered keyword that the name means now, or none.
    [[nodiscard]] TKeyword* GetKeywordObject() const;
    /// Raises ceKeyword with the name if no such keyword is registered here or in a parent.
    [[nodiscard]] Extended Get_Number() const override;

private:
    friend class TCalcProgram;

    /// Get_Number, inside a calculation of the evaluator's tree.
    [[nodiscard]] Extended Ask() const;

    String FKeyword;
};

/// A function call in an expression.
class VARNHOLT_EXPORT TFunctionNum final : public TBaseNum {
public:
    /// The function must outlive the call; whichever evaluator registered it owns it.
    TFunctionNum(TCalc& calc, const TFunction& function, TCalcText exp) noexcept;
    ~TFunctionNum() override;

    [[nodiscard]] const TFunction& GetFunction() const noexcept { return FFunction; }
    /// The text between the brackets of the call, trimmed.
    [[nodiscard]] String GetExp() const { return String(FExp.View()); }
    /// One evaluator for each parameter, in order; the call owns them.
    [[nodiscard]] const TCalcList& GetParams() const noexcept { return FParams; }
    [[nodiscard]] Extended Get_Number() const override;

private:
    friend class TCalcParser;

    void SurrenderItems(std::vector<std::unique_ptr<TCalcObj>>& heirs) override;
    void AddParam(std::unique_ptr<TCalc> param);

    const TFunction& FFunction;
    TCalcText FExp;
    TCalcList FParams;
    std::vector<std::unique_ptr<TCalc>> FOwnedParams;  // the evaluators of FParams
};

/// One of the operators + - * / ^.
class VARNHOLT_EXPORT TOperator final : public TCalcObj {
public:
    /// Raises ceOperator with the text unless it is exactly one of the five operators.
    TOperator(TCalc& calc, StringView text);

    [[nodiscard]] Char GetChar() const noexcept { return FChar; }
    [[nodiscard]] String GetStr() const { return String(1, FChar); }
    /// left + right and so on, in extended precision; "^" is Power of the platform.
    /// Raises ceDivideByZero for "/" with right equal to 0.
    [[nodiscard]] Extended Execute(Extended left, Extended right) const;

private:
    Char FChar;
};

}  // namespace Varnholt
