-- Converts an XFloat value in adder form to YDouble: in adder form (target 1), or normalized for a multiplier or
-- divider (target 0). Exact; exponent field 0 is zero. Combinational: no clock, latency 0. Normalizing takes its time,
-- so designs take target 1 and a normalizer behind it.
--   step flags:      exponent field 0 is zero
--   step magnitude:  without its sign (target 0)
--   step normalize:  highest 1 to the front (target 0)
--   step place:      the fields; the exponent with the double's bias
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity castxtoy is
  generic (target : natural; mantissa : positive);
  port (aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(10 * target + 67 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end castxtoy;

architecture rtl of castxtoy is
  constant exponent_bits   : positive := 10;
  constant guard_bits      : positive := 5;   -- and the sign, for -2 to the power mantissa - 1 has a magnitude
  constant bias_difference : positive := 896;
  constant padded          : positive := 8 * (mantissa / 8 + 1);

  -- flags
  signal exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal mantissa_in : std_logic_vector(mantissa - 1 downto 0);
  signal exponent_cc : std_logic_vector(12 downto 0);

  -- magnitude
  signal sign : std_logic_vector(0 downto 0);
  signal complement, magnitude : std_logic_vector(mantissa - 1 downto 0);

  -- normalize
  signal normal : std_logic_vector(padded - 1 downto 0);
  signal zeros : std_logic_vector(5 downto 0);
  signal passed : std_logic_vector(0 downto 0);

  -- place
  signal behind : std_logic_vector(63 - mantissa downto 0);
  signal tail : std_logic_vector(52 - padded downto 0);
  signal leading : std_logic_vector(12 downto 0);
begin
  assert target <= 1 report "castxtoy: target is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "castxtoy: mantissa is 32 or 36" severity failure;

  -- flags
  exponent <= aa(exponent_bits downto 1);
  mantissa_in <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  exponent_cc <= std_logic_vector(resize(unsigned(exponent), 13) + bias_difference);
  ccsat <= aasat;
  ccnan <= aanan;

  for_adders : if target = 1 generate
    -- place
    cczip <= '1' when aazip = '1' or unsigned(exponent) = 0 else '0';
    behind <= (others => '0');
    cc <= mantissa_in & behind & exponent_cc;
  end generate;

  for_others : if target = 0 generate
    -- magnitude
    sign <= mantissa_in(mantissa - 1 downto mantissa - 1);
    complement <= not mantissa_in when sign = "1" else mantissa_in;
    magnitude <= std_logic_vector(unsigned(complement) + unsigned(sign));

    -- normalize
    normalize : entity work.xfc_normalize generic map (mantissa, 1, 0, 0, 0, 0)
      port map ('0', '0', magnitude, '0', "0", normal, zeros, passed);

    -- place
    cczip <= '1' when aazip = '1' or unsigned(exponent) = 0 or unsigned(mantissa_in) = 0 else '0';
    tail <= (others => '0');
    leading <= std_logic_vector(unsigned(exponent_cc) + guard_bits - unsigned(zeros));
    cc <= sign & normal & tail & leading;
  end generate;
end rtl;
